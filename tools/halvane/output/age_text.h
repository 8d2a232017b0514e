// How long ago something was, in at most four cells.
//
// A pure function; any thread may call it.
#ifndef TOOLS_HALVANE_OUTPUT_AGE_TEXT_H
#define TOOLS_HALVANE_OUTPUT_AGE_TEXT_H

#include <cstdint>
#include <string>

namespace halvane::tool {

// "0.4s", "46s", "12m", "5h", "30d"; ">99d" beyond. Seconds are rounded; of greater units only
// whole ones count. A negative age counts as none.
std::string ageText(std::int64_t nanoseconds);

}  // namespace halvane::tool

#endif
