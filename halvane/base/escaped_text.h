// Received octets as text that is safe to show.
//
// Free functions without state; any thread may call them.
#ifndef HALVANE_BASE_ESCAPED_TEXT_H
#define HALVANE_BASE_ESCAPED_TEXT_H

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "halvane/base/export.h"

namespace halvane {

// Characters of well-formed UTF-8 stay as they are. Each octet of what could deceive a reader or
// command a terminal becomes \xNN (upper-case digits): octets that are no well-formed UTF-8,
// control characters (C0, DEL, C1), and characters that show nothing but change how others are
// shown (zero-width, bidirectional, line and paragraph separators). A backslash becomes two, so
// that the text leads back to the octets.
HALVANE_EXPORT std::string escapedText(std::string_view text);
HALVANE_EXPORT std::string escapedText(std::span<const std::uint8_t> octets);

}  // namespace halvane

#endif
