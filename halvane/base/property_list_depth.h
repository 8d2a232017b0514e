// The depth of property-list values.
#ifndef HALVANE_BASE_PROPERTY_LIST_DEPTH_H
#define HALVANE_BASE_PROPERTY_LIST_DEPTH_H

#include <string_view>

namespace halvane {

// How deep a value may nest where it is written out: the root is at level 1, what it holds at
// level 2. XML refuses a deeper value; a text holds the other text in its place.
inline constexpr int kPropertyListMaxDepth = 256;
inline constexpr std::string_view kPropertyListTooDeepText = "<<NESTED TOO DEEP>>";

}  // namespace halvane

#endif
