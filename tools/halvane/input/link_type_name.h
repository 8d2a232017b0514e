// Link types of captures in words.
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_INPUT_LINK_TYPE_NAME_H
#define TOOLS_HALVANE_INPUT_LINK_TYPE_NAME_H

#include <string>

#include "tools/halvane/input/packet_source.h"

namespace halvane::tool {

// "EN10MB (Ethernet)"; the number alone if it has no name.
std::string linkTypeName(int linkType);

// Of an interface: "its frames are not 802.11, but of link type EN10MB (Ethernet)".
std::string notWiFiText(int linkType);

// Of a capture: "holds Ethernet frames, no 802.11 (link type 1)", and how to capture others.
ReadingFault notWiFiFault(int linkType);

}  // namespace halvane::tool

#endif
