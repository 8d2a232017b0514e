// The reasons for which a station is deauthenticated or disassociated (IEEE 802.11-2020, 9.4.1.7).
#ifndef TOOLS_HALVANE_OUTPUT_REASON_CODE_H
#define TOOLS_HALVANE_OUTPUT_REASON_CODE_H

#include <cstdint>
#include <string>

namespace halvane::tool {

// The code and its words: "5 AP is full" briefly, or "5 AP is unable to handle all currently
// associated STAs". A code without words is alone.
std::string reasonText(std::uint64_t code, bool isBrief);

}  // namespace halvane::tool

#endif
