// The arithmetic of up-ticks for a clock of any rate. All functions are pure.
// REQUIRES: perSecond is above 0. For NTP time and sleeping it is also below 2^32, otherwise
// products overflow.
#ifndef HALVANE_UTILS_SCAN_UP_TICKS_INTERNAL_H
#define HALVANE_UTILS_SCAN_UP_TICKS_INTERNAL_H

#include <cstdint>
#include <ctime>

#include "halvane/utils/scan/up_ticks.h"

// Each conversion with the factor by which it multiplies, if a second has `perSecond` ticks.
#define HALVANE_UP_TICKS_CONVERSIONS(define)                                                  \
    define(UpTicksToSeconds, 1 / perSecond) define(UpTicksToMilliseconds, 1e3 / perSecond)    \
        define(UpTicksToMicroseconds, 1e6 / perSecond)                                        \
            define(UpTicksToNanoseconds, 1e9 / perSecond) define(SecondsToUpTicks, perSecond) \
                define(MillisecondsToUpTicks, perSecond / 1e3)                                \
                    define(MicrosecondsToUpTicks, perSecond / 1e6)                            \
                        define(NanosecondsToUpTicks, perSecond / 1e9)

namespace halvane::up_ticks {

// Returns the truncated double-precision product; UINT64_MAX if it is beyond 64 bits.
inline std::uint64_t scaled(std::uint64_t value, double factor) {
    constexpr double kTwoTo64 = 18446744073709551616.0;
    const double product = static_cast<double>(value) * factor;
    return product < kTwoTo64 ? static_cast<std::uint64_t>(product) : UINT64_MAX;
}

// Defines factorOf...(perSecond) and ...(value, perSecond) for each conversion.
#define HALVANE_UP_TICKS_DEFINE(name, factor)                                 \
    constexpr double factorOf##name(double perSecond) {                       \
        return (factor);                                                      \
    }                                                                         \
    inline std::uint64_t name(std::uint64_t value, std::uint64_t perSecond) { \
        return scaled(value, factorOf##name(static_cast<double>(perSecond))); \
    }
HALVANE_UP_TICKS_CONVERSIONS(HALVANE_UP_TICKS_DEFINE)
#undef HALVANE_UP_TICKS_DEFINE

constexpr std::uint64_t UpTicksToNTP(std::uint64_t ticks, std::uint64_t perSecond) {
    return (ticks / perSecond) << 32 | ((ticks % perSecond) << 32) / perSecond;
}

constexpr std::uint64_t NTPtoUpTicks(std::uint64_t ntp, std::uint64_t perSecond) {
    const std::uint64_t fraction = ntp & 0xFFFFFFFF;
    return ((fraction * perSecond) >> 32) + (ntp >> 32) * perSecond;
}

// Returns the argument for nanosleep(2): the whole seconds as a 32-bit number, and the rest.
inline timespec sleepOf(std::uint64_t ticks, std::uint64_t perSecond) {
    constexpr std::uint64_t kNanosecondsPerSecond = 1'000'000'000;
    timespec duration{};
    duration.tv_sec = static_cast<std::uint32_t>(ticks / perSecond);
    duration.tv_nsec = static_cast<decltype(duration.tv_nsec)>((ticks % perSecond) *
                                                               kNanosecondsPerSecond / perSecond);
    return duration;
}

}  // namespace halvane::up_ticks

#endif
