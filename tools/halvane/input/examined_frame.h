// The frame in a packet of a file or of now.
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_INPUT_EXAMINED_FRAME_H
#define TOOLS_HALVANE_INPUT_EXAMINED_FRAME_H

#include "halvane/capture/captured_frame.h"

#include "tools/halvane/input/packet_source.h"

namespace halvane::tool {

// As capture::examinePacket(), and by what the capture itself tells of frame check sequences. The
// spans in the result borrow from the packet's bytes.
capture::CapturedFrame examinedFrame(const Packet& packet);

// The same where the frame stays. REQUIRES: `frame.radio` is empty.
void examineFrame(const Packet& packet, capture::CapturedFrame& frame);

}  // namespace halvane::tool

#endif
