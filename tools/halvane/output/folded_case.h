// Texts for comparing without regard to case.
#ifndef TOOLS_HALVANE_OUTPUT_FOLDED_CASE_H
#define TOOLS_HALVANE_OUTPUT_FOLDED_CASE_H

#include <string>
#include <string_view>

#include "halvane/utils/text/letter_case.h"

namespace halvane::tool {

// Returns the text with its ASCII letters small; all other octets stay.
inline std::string foldedCase(std::string_view text) {
    std::string folded(text);
    for (char& letter : folded) tolowerstr(&letter, 1);
    return folded;
}

}  // namespace halvane::tool

#endif
