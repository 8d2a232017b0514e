// Clocks, random values, the console and the system log, others in their places. A program that
// links this gets the system's own until a test replaces them.
//
// The linker binds the calls of the library to the functions of replaced_system.cpp (--wrap), so
// that the library itself knows of no replacement.
#ifndef TESTS_SUPPORT_REPLACED_SYSTEM_H
#define TESTS_SUPPORT_REPLACED_SYSTEM_H

#include <cstdint>
#include <ctime>
#include <span>
#include <string_view>

#include "halvane/platform/os/wall_clock_internal.h"

namespace halvane {

// While one lives the monotonic clock stands still, and sleeping moves it on instead of waiting.
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

// Each puts another in the system's place for the whole process; null puts that back.
using WallClock = WallTime (*)();
void replaceWallClock(WallClock clock);

using RandomSource = void (*)(std::span<std::uint32_t> values);
void replaceRandomSource(RandomSource source);

using SystemLogger = void (*)(int priority, std::string_view text);
void replaceSystemLog(SystemLogger logger);

// The text must outlive its use.
void replaceConsoleDevice(const char* path);

}  // namespace halvane

#endif
