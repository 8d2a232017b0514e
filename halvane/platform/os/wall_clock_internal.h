// The time of day.
//
// Threads: the function may be called from any thread.
#ifndef HALVANE_PLATFORM_OS_WALL_CLOCK_INTERNAL_H
#define HALVANE_PLATFORM_OS_WALL_CLOCK_INTERNAL_H

#include <cstdint>

namespace halvane {

struct WallTime {
    std::int64_t seconds;        // since 1970-01-01 00:00:00 UTC
    std::uint32_t microseconds;  // 0 to 999999
};

// The current time by the system's clock.
WallTime wallTime();

}  // namespace halvane

#endif
