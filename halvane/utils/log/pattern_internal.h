// The patterns of control strings.
#ifndef HALVANE_UTILS_LOG_PATTERN_INTERNAL_H
#define HALVANE_UTILS_LOG_PATTERN_INTERNAL_H

#include <string_view>

namespace halvane::logging {

// Returns whether the pattern matches the name. '^', '$', '.' and '*' work as in regular
// expressions. The time is proportional to the product of the lengths.
bool __LogCategory_match(std::string_view pattern, std::string_view name);

}  // namespace halvane::logging

#endif
