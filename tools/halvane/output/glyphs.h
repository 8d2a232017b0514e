// The signs that tables are drawn with, by what the terminal can show.
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_OUTPUT_GLYPHS_H
#define TOOLS_HALVANE_OUTPUT_GLYPHS_H

#include <span>

#include "tools/halvane/output/shown_text.h"
#include "tools/halvane/output/surroundings.h"
#include "tools/halvane/output/unicode.h"

namespace halvane::tool {

// Each sign takes one cell.
struct Glyphs {
    std::span<const char* const> barSteps;  // parts of a cell from the left, rising, the whole last
    const char* barRest;                    // an empty cell of a bar; empty if it needs no sign
    std::span<const char* const> historySteps;  // levels, rising
    const char* rising;
    const char* falling;
    const char* cut;      // where a part of a text is missing
    const char* twice80;  // the width of 80+80 MHz, four cells
};

enum class GlyphSet { UTF8, LinuxConsole, ASCII };

const Glyphs& glyphsOf(GlyphSet set);

// What the user asks for.
struct TextWishes {
    bool isASCII = false;
    AmbiguousWidth ambiguous = AmbiguousWidth::One;
};

// The signs of UTF-8 are of ambiguous width. Where such characters take two cells, ASCII signs keep
// the columns in order.
GlyphSet glyphSetFor(const Surroundings& surroundings, const TextWishes& wishes);

// The rules for texts of others, by the same.
TextRules textRulesFor(const Surroundings& surroundings, const TextWishes& wishes);

}  // namespace halvane::tool

#endif
