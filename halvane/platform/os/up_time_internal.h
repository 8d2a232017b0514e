// The system's monotonic clock, and a clock for tests in its place.
//
// Everything here may be called from any thread.
#ifndef HALVANE_PLATFORM_OS_UP_TIME_INTERNAL_H
#define HALVANE_PLATFORM_OS_UP_TIME_INTERNAL_H

#include <atomic>
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

// While one lives the clock stands still, and sleeping moves it on instead of waiting.
// At most one may live at a time; threads that use the clock meanwhile see the simulated one.
class ScopedUpTime {
  public:
    explicit ScopedUpTime(std::uint64_t ticks = 0);
    ~ScopedUpTime();
    ScopedUpTime(const ScopedUpTime&) = delete;
    ScopedUpTime& operator=(const ScopedUpTime&) = delete;

    std::uint64_t now() const;
    void set(std::uint64_t ticks);
    void advance(std::uint64_t ticks);

    // How often the clock was asked to sleep, and for how long the last time.
    unsigned sleepCount() const;
    timespec lastSleep() const;

    // What sleeping answers from now on: 0, or an error number. A sleep that fails takes no time.
    void failSleepsWith(int error);
};

}  // namespace halvane

#endif
