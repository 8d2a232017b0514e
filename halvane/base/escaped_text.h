// Makes received octets safe to show.
//
// Free functions without state; any thread may call them.
#ifndef HALVANE_BASE_ESCAPED_TEXT_H
#define HALVANE_BASE_ESCAPED_TEXT_H

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "halvane/base/cxx20.h"
#include "halvane/base/export.h"

namespace halvane {

// Returns `text` in a form that is safe to show. Well-formed UTF-8 characters stay as they are.
// Octets that could deceive a reader or command a terminal become \xNN each (upper-case digits):
// - octets that are not well-formed UTF-8
// - control characters (C0, DEL, C1)
// - characters that show nothing but change how others are shown (zero-width characters,
//   bidirectional controls, line and paragraph separators)
// A backslash becomes two, so that the octets can be recovered from the text.
HALVANE_EXPORT std::string escapedText(std::string_view text);
HALVANE_EXPORT std::string escapedText(std::span<const std::uint8_t> octets);

}  // namespace halvane

#endif
