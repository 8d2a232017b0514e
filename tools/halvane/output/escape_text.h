// Received octets as text that is safe to show.
#ifndef TOOLS_HALVANE_OUTPUT_ESCAPE_TEXT_H
#define TOOLS_HALVANE_OUTPUT_ESCAPE_TEXT_H

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace halvane::tool {

// An SSID for people. Characters of well-formed UTF-8 stay as they are. Each octet of what could
// deceive a reader or command a terminal becomes \xNN (upper-case digits): octets that are no
// well-formed UTF-8, control characters (C0, DEL, C1), and characters that show nothing but change
// how others are shown (zero-width, bidirectional, line and paragraph separators). A backslash
// becomes two, so that the text leads back to the octets.
std::string escapeSSID(std::span<const std::uint8_t> ssid);

// Any other text that was received, in the same way.
std::string escapeText(std::string_view text);

}  // namespace halvane::tool

#endif
