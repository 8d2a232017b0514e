#include "tools/halvane/output/time_text.h"

#include <chrono>
#include <cstddef>

namespace halvane::tool {

namespace {

constexpr std::int64_t kSecond = 1'000'000'000;

// Appends the last digits of a number, as many as `count`, and what ends them.
void append(std::string& text, std::int64_t number, std::size_t count, char end = 0) {
    const std::size_t start = text.size();
    text.append(count, '0');
    for (std::size_t i = start + count; i-- > start; number /= 10) {
        text[i] = static_cast<char>('0' + number % 10);
    }
    if (end != 0) text += end;
}

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
    std::string text(char separator) const {
        std::string text;
        append(text, static_cast<int>(date.year()), 4, '-');
        append(text, static_cast<unsigned>(date.month()), 2, '-');
        append(text, static_cast<unsigned>(date.day()), 2, separator);
        append(text, clock.hours().count(), 2, ':');
        append(text, clock.minutes().count(), 2, ':');
        append(text, clock.seconds().count(), 2);
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
    std::string text = moment.text('T');
    text += '.';
    if (moment.fraction % kMicrosecond == 0) {
        append(text, moment.fraction / kMicrosecond, 6, 'Z');
    } else {
        append(text, moment.fraction, 9, 'Z');
    }
    return text;
}

std::string utcSecondText(std::int64_t nanoseconds) {
    return Moment(nanoseconds).text(' ');
}

}  // namespace halvane::tool
