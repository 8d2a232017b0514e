// Replacements for clocks, random values, the console and the system log. A program that links this
// uses the system's own until a test replaces them.
//
// The linker binds the library's calls to the functions of replaced_system.cpp (--wrap), so the
// library does not know of them.
#ifndef TESTS_SUPPORT_REPLACED_SYSTEM_H
#define TESTS_SUPPORT_REPLACED_SYSTEM_H

#include <cstdint>
#include <ctime>
#include <span>
#include <string_view>

#include "halvane/platform/os/wall_clock_internal.h"

namespace halvane {

// While one lives, the monotonic clock stands still, and sleeping advances it instead of waiting.
// At most one may live at a time. All threads see the simulated clock.
class ScopedUpTime {
  public:
    explicit ScopedUpTime(std::uint64_t ticks = 0);
    ~ScopedUpTime();
    ScopedUpTime(const ScopedUpTime&) = delete;
    ScopedUpTime& operator=(const ScopedUpTime&) = delete;

    std::uint64_t now() const;
    void set(std::uint64_t ticks);
    void advance(std::uint64_t ticks);

    // The number of sleeps, and the duration of the last one.
    unsigned sleepCount() const;
    timespec lastSleep() const;

    // Sets what sleeping returns from now on: 0, or an error number. A sleep that fails takes no
    // time.
    void failSleepsWith(int error);
};

// Each replaces the system's function for the whole process; null restores it.
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
