#include "tools/halvane/input/pcapng_time.h"

#include <limits>

namespace halvane::tool {

namespace {

__extension__ using Wide = __int128;

constexpr Wide kBillion = 1'000'000'000;

Wide nanosecondsOfDecimal(std::uint64_t ticks, int digits) {
    Wide value = ticks;
    for (; digits < 9; ++digits) value *= 10;
    for (; digits > 9 && value > 0; --digits) value /= 10;
    return value;
}

}  // namespace

std::optional<std::int64_t> nanosecondsOfTicks(std::uint64_t ticks, std::uint8_t resolution,
                                               std::int64_t offset) {
    const int exponent = resolution & 0x7F;
    const bool isBinary = (resolution & 0x80) != 0;
    const Wide value =
        isBinary ? ticks * kBillion >> exponent : nanosecondsOfDecimal(ticks, exponent);
    const Wide sum = value + offset * kBillion;
    if (sum < std::numeric_limits<std::int64_t>::min() ||
        sum > std::numeric_limits<std::int64_t>::max()) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(sum);
}

}  // namespace halvane::tool
