// The time of day, replaceable so that tests need not race the real clock.
//
// Threads: both functions may be called from any thread.
#ifndef HALVANE_PLATFORM_OS_WALL_CLOCK_INTERNAL_H
#define HALVANE_PLATFORM_OS_WALL_CLOCK_INTERNAL_H

#include <cstdint>

namespace halvane {

struct WallTime {
    std::int64_t seconds;        // since 1970-01-01 00:00:00 UTC
    std::uint32_t microseconds;  // 0 to 999999
};

using WallClock = WallTime (*)();

// Now, by the system's clock or the one that replaces it.
WallTime wallTime();

// Puts `clock` in the system clock's place for the whole process; null puts that back.
void replaceWallClock(WallClock clock);

}  // namespace halvane

#endif
