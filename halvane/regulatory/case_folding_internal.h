// Compares texts for people without regard to case: Latin, Greek and Cyrillic letters in UTF-8,
// whatever the locale is. (Option words are ASCII: see halvane/utils/text/ignore_case_internal.h.)
#ifndef HALVANE_REGULATORY_CASE_FOLDING_INTERNAL_H
#define HALVANE_REGULATORY_CASE_FOLDING_INTERNAL_H

#include <string_view>

namespace halvane {

// Returns the common form of a character and its other case, by simple case folding; the character
// itself if it has no other case.
char32_t foldedCase(char32_t character);

// Returns -1, 0 or 1 if `a` is less than, equal to or greater than `b`, by the code points of the
// folded characters. A text is less than a longer one that begins with it. Bytes that belong to no
// character are compared unchanged, and come after all characters.
int orderOfFolded(std::string_view a, std::string_view b);

}  // namespace halvane

#endif
