// The text of "%N", the local time of day.
#ifndef HALVANE_UTILS_PRINTF_STAMP_INTERNAL_H
#define HALVANE_UTILS_PRINTF_STAMP_INTERNAL_H

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <string_view>

#include "halvane/base/decimal_internal.h"

namespace halvane::printing {

// "YYYY-MM-DD HH:MM:SS.uuuuuu AM", on a 12-hour clock. It is written by hand for speed, since most
// log lines begin with it.
class Stamp {
  public:
    // Of a year with more than four digits the last four are kept.
    void setSecond(const std::tm& local) {
        const int hour = local.tm_hour % 12 == 0 ? 12 : local.tm_hour % 12;
        const std::uint32_t year = static_cast<std::uint32_t>(local.tm_year + 1900) % 10000;
        put(0, year / 100);
        put(2, year % 100);
        put(5, static_cast<std::uint32_t>(local.tm_mon + 1));
        put(8, static_cast<std::uint32_t>(local.tm_mday));
        put(11, static_cast<std::uint32_t>(hour));
        put(14, static_cast<std::uint32_t>(local.tm_min));
        put(17, static_cast<std::uint32_t>(local.tm_sec));
        text_[27] = local.tm_hour < 12 ? 'A' : 'P';
    }

    void setMicroseconds(std::uint32_t microseconds) {
        put(20, microseconds / 10000);
        put(22, microseconds / 100 % 100);
        put(24, microseconds % 100);
    }

    std::string_view text() const { return {text_, kSize}; }
    // The same with a space behind it.
    std::string_view textAndSpace() const { return {text_, kSize + 1}; }

  private:
    void put(int place, std::uint32_t number) { putDecimalPair(text_ + place, number); }

    static constexpr std::size_t kSize = 29;

    char text_[kSize + 2] = "YYYY-MM-DD HH:MM:SS.uuuuuu AM ";
};

}  // namespace halvane::printing

#endif
