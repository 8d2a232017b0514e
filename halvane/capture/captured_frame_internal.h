// The reader behind examinePacket(), which stores what it finds where it stays: a copy of what was
// just written takes longer than reading it.
//
// A free function without state; any thread may call it.
#ifndef HALVANE_CAPTURE_CAPTURED_FRAME_INTERNAL_H
#define HALVANE_CAPTURE_CAPTURED_FRAME_INTERNAL_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "halvane/capture/captured_frame.h"
#include "halvane/capture/link_type.h"

namespace halvane::capture {

// As examinePacket(). REQUIRES: `frame.radio` is empty.
void readPacket(LinkType linkType, std::span<const std::uint8_t> packet,
                std::optional<std::size_t> originalLength, CapturedFrame& frame);

}  // namespace halvane::capture

#endif
