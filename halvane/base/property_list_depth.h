// How deep property-list values may nest.
#ifndef HALVANE_BASE_PROPERTY_LIST_DEPTH_H
#define HALVANE_BASE_PROPERTY_LIST_DEPTH_H

#include <string_view>

#include "halvane/base/cxx20.h"

namespace halvane {

// The greatest depth of a value that is written out. The root is at level 1, its members are at
// level 2. The XML writer refuses a deeper value; a description shows the text below in its place.
inline constexpr int kPropertyListMaxDepth = 256;
inline constexpr std::string_view kPropertyListTooDeepText = "<<NESTED TOO DEEP>>";

}  // namespace halvane

#endif
