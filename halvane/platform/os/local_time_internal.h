// The local time of day.
#ifndef HALVANE_PLATFORM_OS_LOCAL_TIME_INTERNAL_H
#define HALVANE_PLATFORM_OS_LOCAL_TIME_INTERNAL_H

#include <ctime>

namespace halvane {

// localtime_r(3). Nothing is cached between calls: only variables that the C library writes under a
// lock of its own would tell whether the zone has changed.
std::tm localTime(std::time_t seconds);

}  // namespace halvane

#endif
