// The readers behind examinePacket() and parseBeaconFrame(). They store what they find where it
// stays, since a copy of what was just written takes longer than reading it.
//
// Free functions without state; any thread may call them.
#ifndef HALVANE_CAPTURE_CAPTURED_FRAME_INTERNAL_H
#define HALVANE_CAPTURE_CAPTURED_FRAME_INTERNAL_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "halvane/base/result.h"
#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/captured_frame.h"
#include "halvane/capture/link_type.h"

namespace halvane::capture {

// As parseBeaconFrame(). Replaces `content`; a value that it has is overwritten where it stays.
void readBeaconFrame(std::span<const std::uint8_t> frame, Result<BeaconFrame, SkipReason>& content);

// As examinePacket(). REQUIRES: `frame.radio` is empty.
void readPacket(LinkType linkType, std::span<const std::uint8_t> packet,
                std::optional<std::size_t> originalLength, CapturedFrame& frame);

}  // namespace halvane::capture

#endif
