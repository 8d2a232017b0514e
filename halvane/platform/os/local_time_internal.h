// The local time of day.
#ifndef HALVANE_PLATFORM_OS_LOCAL_TIME_INTERNAL_H
#define HALVANE_PLATFORM_OS_LOCAL_TIME_INTERNAL_H

#include <ctime>

namespace halvane {

// localtime_r(3). Nothing is cached between calls.
std::tm localTime(std::time_t seconds);

// What the C library tells of the zone in use: its offset and its two names. Two equal marks are of
// the same zone, or of zones that differ in nothing but the rules or the offset of their summer
// time. The C library keeps one copy of each name for good, so their addresses identify them. It
// writes these variables under a lock of its own, possibly at the same time: a mark may then be of
// no zone, but nothing reads the names.
struct ZoneMark {
    long offset = 0;
    const char* name = nullptr;
    const char* summerName = nullptr;

    bool operator==(const ZoneMark&) const = default;
};
ZoneMark zoneMark();

}  // namespace halvane

#endif
