// The time of day where the program runs.
#ifndef HALVANE_PLATFORM_LOCAL_TIME_INTERNAL_H
#define HALVANE_PLATFORM_LOCAL_TIME_INTERNAL_H

#include <ctime>

namespace halvane {

// localtime_r(3), remembered: log lines come many in a second. Each thread keeps the last answer
// while second and time zone, as tzset(3) tells it, stay the same.
std::tm localTime(std::time_t seconds);

}  // namespace halvane

#endif
