// Frames whose end is missing.
#ifndef TOOLS_HALVANE_SURVEY_CUT_ELEMENTS_H
#define TOOLS_HALVANE_SURVEY_CUT_ELEMENTS_H

#include "halvane/air/bit_octets.h"
#include "halvane/base/byte_cursor.h"
#include "halvane/base/element_id.h"
#include "halvane/capture/beacon_frame.h"

namespace halvane::tool {

// Whether the end is missing by the lengths alone, which those of fragments are like any other. The
// record's own walk, of a time without elements of 254 octets and more, takes these for cut.
inline bool endsInsideAnElement(air::Octets elements) {
    ByteCursor cursor(elements);
    while (const auto length = cursor.peek(1)) {
        if (!cursor.skip(kElementHeaderSize + *length)) break;
    }
    return !cursor.atEnd();
}

// The same, or the capture tells that it kept only the start of the elements.
inline bool isCutFrame(const capture::BeaconFrame& beacon) {
    return beacon.isCut || endsInsideAnElement(beacon.elements);
}

}  // namespace halvane::tool

#endif
