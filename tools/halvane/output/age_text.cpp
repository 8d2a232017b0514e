#include "tools/halvane/output/age_text.h"

#include <algorithm>

namespace halvane::tool {

namespace {

constexpr std::int64_t kSecond = 1'000'000'000;
constexpr std::int64_t kTenth = kSecond / 10;

struct Unit {
    std::int64_t seconds;
    std::int64_t below;  // seconds
    char letter;
};
constexpr Unit kUnits[] = {
    {1, 100, 's'}, {60, 6000, 'm'}, {3600, 360000, 'h'}, {86400, 8640000, 'd'}};

// To the nearest whole number; halves go up. Cannot overflow.
std::int64_t rounded(std::int64_t value, std::int64_t unit) {
    return value / unit + (value % unit >= unit - unit / 2 ? 1 : 0);
}

}  // namespace

std::string ageText(std::int64_t nanoseconds) {
    const std::int64_t age = std::max<std::int64_t>(nanoseconds, 0);
    const std::int64_t tenths = rounded(age, kTenth);
    if (tenths < 100) return std::to_string(tenths / 10) + '.' + std::to_string(tenths % 10) + 's';
    const std::int64_t seconds = rounded(age, kSecond);
    for (const Unit& unit : kUnits) {
        if (seconds < unit.below) return std::to_string(seconds / unit.seconds) + unit.letter;
    }
    return ">99d";
}

}  // namespace halvane::tool
