// Patterns for names.
//
// A pure function; any thread may call it.
#ifndef TOOLS_HALVANE_NETWORKS_WILDCARD_H
#define TOOLS_HALVANE_NETWORKS_WILDCARD_H

#include <string_view>

namespace halvane::tool {

// Whether the pattern describes all of the text: '*' stands for any octets, or none, '?' for one
// character of UTF-8 or one octet that belongs to none, a backslash before one of these three for
// the sign itself, and everything else for itself. The time is at most the product of the sizes.
bool matchesWildcard(std::string_view pattern, std::string_view text);

}  // namespace halvane::tool

#endif
