// Comparison of texts that takes upper and lower case letters for equal.
#ifndef HALVANE_UTILS_IGNORE_CASE_INTERNAL_H
#define HALVANE_UTILS_IGNORE_CASE_INTERNAL_H

#include <string_view>
#include <strings.h>

namespace halvane {

inline bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() && ::strncasecmp(a.data(), b.data(), a.size()) == 0;
}

}  // namespace halvane

#endif
