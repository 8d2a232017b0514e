// From a captured frame to its BSS record.
#ifndef TOOLS_HALVANE_FRAME_RECORD_H
#define TOOLS_HALVANE_FRAME_RECORD_H

#include "halvane/ie/mac.h"

#include "tools/halvane/capture_reader.h"

namespace halvane::tool {

// The record of a beacon or probe response. Its channel is the one of the radio header, else of the
// DS Parameter Set, else the primary channel of the HT Operation element.
// REQUIRES: frame.beacon() is not null.
HalvaneMAC recordOfFrame(const CapturedFrame& frame);

}  // namespace halvane::tool

#endif
