// The reader behind parseBeaconFrame(), which stores what it finds where it stays: a copy of what
// was just written takes longer than reading it.
//
// A free function without state; any thread may call it.
#ifndef HALVANE_CAPTURE_BEACON_FRAME_INTERNAL_H
#define HALVANE_CAPTURE_BEACON_FRAME_INTERNAL_H

#include <cstdint>
#include <span>

#include "halvane/base/result.h"
#include "halvane/capture/beacon_frame.h"

namespace halvane::capture {

// As parseBeaconFrame(). Replaces `content`; a value that it has is overwritten where it stays.
void readBeaconFrame(std::span<const std::uint8_t> frame, Result<BeaconFrame, SkipReason>& content);

}  // namespace halvane::capture

#endif
