// Times of the UTC (RFC 3339), whatever the time zone and the locale are.
//
// Pure functions; any thread may call them.
#ifndef TOOLS_HALVANE_OUTPUT_TIME_TEXT_H
#define TOOLS_HALVANE_OUTPUT_TIME_TEXT_H

#include <cstdint>
#include <string>

namespace halvane::tool {

// "2023-01-06T22:10:04.117250Z" of nanoseconds since 1970-01-01 00:00 UTC: six digits of the
// second, or nine where there are any nanoseconds.
std::string utcTimeText(std::int64_t nanoseconds);

// "2023-01-06 22:10:04", for people.
std::string utcSecondText(std::int64_t nanoseconds);

}  // namespace halvane::tool

#endif
