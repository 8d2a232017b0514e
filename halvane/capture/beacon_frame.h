// Beacons and probe responses: the two frames in which a BSS describes itself.
//
// Free functions without state; any thread may call them.
#ifndef HALVANE_CAPTURE_BEACON_FRAME_H
#define HALVANE_CAPTURE_BEACON_FRAME_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <variant>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"

namespace halvane::capture {

// Why a captured frame gives no record. The order is the one that summaries print in.
enum class SkipReason {
    OtherFrame,       // neither a beacon nor a probe response
    Fragment,         // part of a frame that was sent in pieces
    Encrypted,        // its body is protected
    Short,            // ends before its elements start
    Damaged,          // received with a wrong frame check sequence
    MalformedHeader,  // the radio header before it cannot be read
};
inline constexpr std::size_t kSkipReasonCount = 6;

enum class BeaconSubtype { Beacon, ProbeResponse };

struct BeaconFrame {
    BeaconSubtype subtype = BeaconSubtype::Beacon;
    ByteBuffer bssid;                        // 6 bytes
    std::uint16_t beaconInterval = 0;        // TU (1.024 ms)
    std::uint16_t capabilities = 0;          // capability information field
    std::span<const std::uint8_t> elements;  // borrowed from the frame; may be empty
};

// Reads an 802.11 frame that has no radio header and no frame check sequence any more. Answers
// every reason but Damaged and MalformedHeader, which the frame itself cannot tell.
HALVANE_EXPORT std::variant<BeaconFrame, SkipReason> parseBeaconFrame(
    std::span<const std::uint8_t> frame);

}  // namespace halvane::capture

#endif
