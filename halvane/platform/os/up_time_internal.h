// The system's monotonic clock.
//
// Everything here may be called from any thread.
#ifndef HALVANE_PLATFORM_OS_UP_TIME_INTERNAL_H
#define HALVANE_PLATFORM_OS_UP_TIME_INTERNAL_H

#include <cstdint>
#include <ctime>
#include <optional>

namespace halvane {

// A tick of the clock lasts numerator / denominator nanoseconds.
struct Timebase {
    std::uint32_t numerator;
    std::uint32_t denominator;
};

// That of the clock; absent where the system cannot tell it.
std::optional<Timebase> upTimeTimebase();

// Ticks in a second: 1000000000 where there is no timebase or either part of it is 0.
std::uint64_t ticksPerSecondOf(const std::optional<Timebase>& timebase);

// The ticks now.
std::uint64_t upTimeNow();

// The ticks at the clock's last step, some milliseconds ago at most: for a quarter of the cost.
std::uint64_t upTimeLastStep();

// nanosleep(2) without the time left: 0, or -1 and errno.
int upTimeSleep(const timespec& duration);

}  // namespace halvane

#endif
