// Text of several lines that fits a width.
#ifndef TOOLS_HALVANE_OUTPUT_PARAGRAPH_H
#define TOOLS_HALVANE_OUTPUT_PARAGRAPH_H

#include <cstddef>
#include <string>
#include <string_view>

namespace halvane::tool {

inline constexpr std::size_t kTextWidth = 80;

// Returns `text` in lines of at most `width` octets, each with its newline. The first line begins
// with `head`, every other one with `indent` blanks. Lines are broken at blanks; a word that is
// longer than a line has a line of its own.
std::string paragraph(std::string_view head, std::string_view text, std::size_t indent,
                      std::size_t width = kTextWidth);

}  // namespace halvane::tool

#endif
