// Frames whose end is missing.
#ifndef TOOLS_HALVANE_SURVEY_CUT_ELEMENTS_H
#define TOOLS_HALVANE_SURVEY_CUT_ELEMENTS_H

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_range.h"
#include "halvane/capture/beacon_frame.h"

namespace halvane::tool {

// The record's own walk, of a time without elements of 254 octets and more, takes these for cut.
inline bool endsInsideAnElement(air::Octets elements) {
    return !air::ElementRange(elements).trailing().empty();
}

// The same, or the capture tells that it kept only the start of the elements.
inline bool isCutFrame(const capture::BeaconFrame& beacon) {
    return beacon.isCut || endsInsideAnElement(beacon.elements);
}

}  // namespace halvane::tool

#endif
