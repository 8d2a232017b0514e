// Texts for people without regard to case: the letters of Latin, Greek and Cyrillic, in UTF-8,
// whatever the locale is. (Option words are ASCII: see halvane/utils/text/ignore_case_internal.h.)
#ifndef HALVANE_REGULATORY_CASE_FOLDING_INTERNAL_H
#define HALVANE_REGULATORY_CASE_FOLDING_INTERNAL_H

#include <string_view>

namespace halvane {

// What stands for a character and its other case alike, by simple case folding; the character
// itself where there is none.
char32_t foldedCase(char32_t character);

// -1, 0 or 1: `a` is less than `b`, its equal, or greater, by the code points of their folded
// characters. A text is less than one that it begins. Bytes that belong to no character are
// compared as they are, and stand behind all characters.
int orderOfFolded(std::string_view a, std::string_view b);

}  // namespace halvane

#endif
