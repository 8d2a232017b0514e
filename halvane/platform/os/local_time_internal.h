// The time of day where the program runs.
#ifndef HALVANE_PLATFORM_OS_LOCAL_TIME_INTERNAL_H
#define HALVANE_PLATFORM_OS_LOCAL_TIME_INTERNAL_H

#include <ctime>

namespace halvane {

// localtime_r(3). Nothing is remembered between two calls: whether the zone has changed meanwhile
// could only be told from variables that the C library writes under a lock of its own.
std::tm localTime(std::time_t seconds);

}  // namespace halvane

#endif
