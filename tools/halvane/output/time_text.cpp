#include "tools/halvane/output/time_text.h"

#include <array>
#include <chrono>
#include <cstdio>

namespace halvane::tool {

namespace {

constexpr std::int64_t kSecond = 1'000'000'000;

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

    std::string text(char separator) const {
        std::array<char, 32> text{};
        std::snprintf(
            text.data(), text.size(), "%04d-%02u-%02u%c%02d:%02d:%02d",
            static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
            static_cast<unsigned>(date.day()), separator, static_cast<int>(clock.hours().count()),
            static_cast<int>(clock.minutes().count()), static_cast<int>(clock.seconds().count()));
        return text.data();
    }

    std::chrono::year_month_day date{};
    std::chrono::hh_mm_ss<std::chrono::seconds> clock{};
    std::int64_t fraction = 0;
};

}  // namespace

std::string utcTimeText(std::int64_t nanoseconds) {
    constexpr std::int64_t kNanoseconds = 1000;
    const Moment moment(nanoseconds);
    const auto fraction = static_cast<long long>(moment.fraction);
    std::array<char, 16> digits{};
    if (fraction % kNanoseconds == 0) {
        std::snprintf(digits.data(), digits.size(), ".%06lldZ", fraction / kNanoseconds);
    } else {
        std::snprintf(digits.data(), digits.size(), ".%09lldZ", fraction);
    }
    return moment.text('T') + digits.data();
}

std::string utcSecondText(std::int64_t nanoseconds) {
    return Moment(nanoseconds).text(' ');
}

}  // namespace halvane::tool
