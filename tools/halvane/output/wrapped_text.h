// Texts of several parts in lines of a terminal.
//
// Plain values and free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_OUTPUT_WRAPPED_TEXT_H
#define TOOLS_HALVANE_OUTPUT_WRAPPED_TEXT_H

#include <cstddef>
#include <string_view>
#include <vector>

#include "tools/halvane/output/shown_text.h"

namespace halvane::tool {

// A part of a text. Its words stay whole where they fit into a line.
struct TextPart {
    std::vector<ShownText> words{};
    std::string_view joiner = "; ";  // after the part before, if both stand on one line
    bool beginsLine = false;

    // A text of the tool itself: its blanks part its words.
    // REQUIRES: `text` is UTF-8 and visible.
    static TextPart own(std::string_view text, std::string_view joiner = "; ");
    // A text of another, which is one word.
    static TextPart foreign(ShownText text, std::string_view joiner = "; ");
};

// Returns lines of at most `width` cells. A part begins a new line if it does not fit on the last
// one whole. A word that is wider than a line is broken between its units.
// REQUIRES: width > 0.
std::vector<ShownText> wrapped(const std::vector<TextPart>& parts, std::size_t width);

}  // namespace halvane::tool

#endif
