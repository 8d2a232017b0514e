// Values with their reasons: what, value, because.
//
// Plain values and free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_OUTPUT_REASON_TABLE_H
#define TOOLS_HALVANE_OUTPUT_REASON_TABLE_H

#include <cstddef>
#include <string>
#include <vector>

#include "tools/halvane/output/text_style.h"
#include "tools/halvane/output/theme.h"
#include "tools/halvane/output/wrapped_text.h"

namespace halvane::tool {

// The column of values, and of all text below a heading of these tables.
inline constexpr std::size_t kValueColumn = 12;

struct ReasonRow {
    std::string what{};  // empty: of the same as the row above
    std::vector<TextPart> value{};
    std::vector<TextPart> because{};
    Meaning meaning = Meaning::Plain;  // of the value
    bool isTall = false;  // the parts of the value have a line each, unless the table is wide
};

// Returns the lines of the rows, each with a newline. The columns have 11 cells, 22 (from a width
// of 120 on 30) and the rest. Below a width of 60 the reasons stand under the values.
std::string reasonLines(const std::vector<ReasonRow>& rows, const TextStyle& style);

// Returns lines that begin with `head`, the others with as many blanks, none wider than the style's
// width where that has room for a word. `meaning` is that of the parts.
std::string hangingLines(const ShownText& head, Meaning headMeaning,
                         const std::vector<TextPart>& parts, Meaning meaning,
                         const TextStyle& style);

}  // namespace halvane::tool

#endif
