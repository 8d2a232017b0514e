#include "tools/halvane/output/time_text.h"

#include <array>
#include <chrono>
#include <cstddef>

namespace halvane::tool {

namespace {

constexpr std::int64_t kSecond = 1'000'000'000;

constexpr std::size_t kMostCharacters = 30;  // "2023-01-06T22:10:04.117250001Z"

// A text that grows in place.
class TimeText {
  public:
    // Appends the last digits of a number, as many as `count`.
    void digits(std::int64_t number, std::size_t count) {
        auto rest = static_cast<std::uint32_t>(number);
        for (std::size_t i = size_ + count; i-- > size_; rest /= 10) {
            text_[i] = static_cast<char>('0' + rest % 10);
        }
        size_ += count;
    }
    void character(char character) { text_[size_++] = character; }
    std::string string() const { return {text_.data(), size_}; }

  private:
    std::array<char, kMostCharacters> text_;  // NOLINT(*-member-init): `size_` are written
    std::size_t size_ = 0;
};

// A day, the seconds since its begin, and nanoseconds.
struct Moment {
    explicit Moment(std::int64_t nanoseconds) {
        using namespace std::chrono;
        fraction = nanoseconds % kSecond;
        if (fraction < 0) fraction += kSecond;
        // Nanoseconds do not reach the begin of the earliest day.
        const sys_seconds time{
            seconds(nanoseconds / kSecond - (nanoseconds % kSecond < 0 ? 1 : 0))};
        const auto day = floor<days>(time);
        date = year_month_day(day);
        clock = hh_mm_ss<seconds>(time - day);
    }

    // Nanoseconds do not leave the years of four digits.
    TimeText text(char separator) const {
        TimeText text;
        text.digits(static_cast<int>(date.year()), 4);
        text.character('-');
        text.digits(static_cast<unsigned>(date.month()), 2);
        text.character('-');
        text.digits(static_cast<unsigned>(date.day()), 2);
        text.character(separator);
        text.digits(clock.hours().count(), 2);
        text.character(':');
        text.digits(clock.minutes().count(), 2);
        text.character(':');
        text.digits(clock.seconds().count(), 2);
        return text;
    }

    std::chrono::year_month_day date{};
    std::chrono::hh_mm_ss<std::chrono::seconds> clock{};
    std::int64_t fraction = 0;
};

}  // namespace

std::string utcTimeText(std::int64_t nanoseconds) {
    constexpr std::int64_t kMicrosecond = 1000;
    const Moment moment(nanoseconds);
    TimeText text = moment.text('T');
    text.character('.');
    if (moment.fraction % kMicrosecond == 0) {
        text.digits(moment.fraction / kMicrosecond, 6);
    } else {
        text.digits(moment.fraction, 9);
    }
    text.character('Z');
    return text.string();
}

std::string utcSecondText(std::int64_t nanoseconds) {
    return Moment(nanoseconds).text(' ').string();
}

}  // namespace halvane::tool
