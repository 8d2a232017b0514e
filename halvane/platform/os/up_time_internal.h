// The system's monotonic clock.
//
// Threads: any thread may call any function.
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

// The timebase of the clock; absent if the system cannot tell it.
std::optional<Timebase> upTimeTimebase();

// Ticks per second; 1000000000 if there is no timebase or either part of it is 0.
std::uint64_t ticksPerSecondOf(const std::optional<Timebase>& timebase);

// The current ticks.
std::uint64_t upTimeNow();

// The ticks at the clock's last step, at most some milliseconds ago. This costs a quarter of
// upTimeNow().
std::uint64_t upTimeLastStep();

// nanosleep(2) without the remaining time: returns 0, or -1 with errno set.
int upTimeSleep(const timespec& duration);

}  // namespace halvane

#endif
