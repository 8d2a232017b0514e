// Characters whose East Asian Width is ambiguous (Unicode Standard Annex #11, class A): one cell on
// most terminals, two on some for Chinese, Japanese and Korean.
#ifndef TOOLS_HALVANE_OUTPUT_AMBIGUOUS_WIDTH_H
#define TOOLS_HALVANE_OUTPUT_AMBIGUOUS_WIDTH_H

namespace halvane::tool {

// Combining marks and private characters are ambiguous too, but not among these: a mark takes no
// cell, and a private character is never shown.
bool isOfAmbiguousWidth(char32_t character);

}  // namespace halvane::tool

#endif
