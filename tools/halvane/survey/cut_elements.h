// Frames that end inside an element.
#ifndef TOOLS_HALVANE_SURVEY_CUT_ELEMENTS_H
#define TOOLS_HALVANE_SURVEY_CUT_ELEMENTS_H

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_range.h"

namespace halvane::tool {

// The record's own walk, of a time without elements of 254 octets and more, takes these for cut.
inline bool endsInsideAnElement(air::Octets elements) {
    return !air::ElementRange(elements).trailing().empty();
}

}  // namespace halvane::tool

#endif
