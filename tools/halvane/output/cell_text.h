// Texts in the cells of a terminal: how wide they are, and how they are made to fit.
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_OUTPUT_CELL_TEXT_H
#define TOOLS_HALVANE_OUTPUT_CELL_TEXT_H

#include <cstddef>
#include <string_view>

#include "tools/halvane/output/shown_text.h"

namespace halvane::tool {

// Returns the cells of a text of the tool itself.
// REQUIRES: `text` is UTF-8 and visible.
std::size_t cellsOf(std::string_view text, const TextRules& rules);

// These return the text if it fits into `cells`, or else a part of it with `mark` where something
// was cut: no more than `cells`, and less where a unit of several cells does not fit. A unit is
// never split. The result is empty if not even the mark fits.

// Keeps the beginning and the end: of the cells beside the mark, the end has two fifths, rounded
// down. It also has the cells that the beginning does not fill.
ShownText cutInMiddle(const ShownText& text, std::size_t cells, const ShownText& mark);

ShownText cutAtEnd(const ShownText& text, std::size_t cells, const ShownText& mark);

}  // namespace halvane::tool

#endif
