// The networks of the kernel's list as frames, as if a capture had them.
//
// A free function without state; any thread may call it.
#ifndef TOOLS_HALVANE_INPUT_SCANNED_FRAMES_H
#define TOOLS_HALVANE_INPUT_SCANNED_FRAMES_H

#include <vector>

#include "halvane/capture/captured_frame.h"

#include "tools/halvane/input/nl80211_message.h"

namespace halvane::tool {

// Returns a beacon and a probe response, in this order, as far as the list has their elements; a
// beacon without elements if it has none. A signal of no unit is left out. The elements borrow from
// `network`.
std::vector<capture::CapturedFrame> framesOf(const ScannedNetwork& network);

}  // namespace halvane::tool

#endif
