// Splits a captured packet into the parts that a BSS record needs.
//
// Free functions and plain values; any thread may use them.
#ifndef HALVANE_CAPTURE_CAPTURED_FRAME_H
#define HALVANE_CAPTURE_CAPTURED_FRAME_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "halvane/base/export.h"
#include "halvane/base/result.h"
#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/link_type.h"
#include "halvane/capture/radio_header.h"

namespace halvane::capture {

struct CapturedFrame {
    RadioInfo radio{};  // all absent if the radio header is malformed
    // The frame, or why it is skipped.
    Result<BeaconFrame, SkipReason> content = Unexpected(SkipReason::OtherFrame);
    bool isCut = false;  // the capture kept only the frame's start (its snapshot length)

    // The beacon or probe response, which this object owns; null for a skipped frame.
    const BeaconFrame* beacon() const { return content ? &*content : nullptr; }
};

// Reads the radio header of `packet`, removes the frame check sequence if there is one, and reads
// the frame between them. A frame is Damaged only if the radio header says so: the frame check
// sequence is not computed (see endsInItsFCS()).
//
// `originalLength` is the length in octets that the packet had before the capture cut its end off.
// If it is absent, or below the length of `packet`, the packet is whole.
//
// The spans in the result borrow from `packet`.
HALVANE_EXPORT CapturedFrame
examinePacket(LinkType linkType, std::span<const std::uint8_t> packet,
              std::optional<std::size_t> originalLength = std::nullopt);

}  // namespace halvane::capture

#endif
