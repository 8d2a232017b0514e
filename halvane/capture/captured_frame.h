// A captured packet, examined for what a BSS record needs.
//
// Free functions and plain values; any thread may use them.
#ifndef HALVANE_CAPTURE_CAPTURED_FRAME_H
#define HALVANE_CAPTURE_CAPTURED_FRAME_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <variant>

#include "halvane/base/export.h"
#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/radio_header.h"

namespace halvane::capture {

struct CapturedFrame {
    RadioInfo radio{};  // all absent after a malformed radio header
    std::variant<BeaconFrame, SkipReason> content = SkipReason::OtherFrame;
    bool isCut = false;  // the capture kept only the frame's start (its snapshot length)

    // The beacon or probe response; null for a skipped frame.
    const BeaconFrame* beacon() const { return std::get_if<BeaconFrame>(&content); }
};

// Takes radio header and frame check sequence off `packet` and reads the frame between them. A
// frame is Damaged only where the radio header says so: the frame check sequence is not computed.
//
// `originalLength` is the packet's length, in octets, before the capture cut its end off. Absent,
// or below the length of `packet`: the packet is whole. The result borrows from `packet`.
HALVANE_EXPORT CapturedFrame
examinePacket(LinkType linkType, std::span<const std::uint8_t> packet,
              std::optional<std::size_t> originalLength = std::nullopt);

}  // namespace halvane::capture

#endif
