// Reads beacons and probe responses, the two frames in which a BSS describes itself (IEEE
// 802.11-2020, 9.3.3.2 and 9.3.3.10).
//
// Free functions without state; any thread may call them.
#ifndef HALVANE_CAPTURE_BEACON_FRAME_H
#define HALVANE_CAPTURE_BEACON_FRAME_H

#include <cstddef>
#include <cstdint>
#include <span>

#include "halvane/base/export.h"
#include "halvane/base/mac_address.h"
#include "halvane/base/result.h"

namespace halvane::capture {

// The reason why a captured frame gives no record. The values start at 0 and serve as an index.
enum class SkipReason {
    OtherFrame,       // neither a beacon nor a probe response
    Fragment,         // part of a frame that was sent in pieces
    Encrypted,        // its body is protected
    Short,            // ends before its elements start
    Damaged,          // received with a wrong frame check sequence
    MalformedHeader,  // the radio header in front of it cannot be read
};
// The number of enumerators of SkipReason.
inline constexpr std::size_t kSkipReasonCount = 6;

// Which kind of management frame it is.
enum class BeaconSubtype { Beacon, ProbeResponse };

struct BeaconFrame {
    BeaconSubtype subtype = BeaconSubtype::Beacon;
    MacAddress bssid{};
    std::uint16_t beaconInterval = 0;          // TU (1.024 ms)
    std::uint16_t capabilities = 0;            // capability information field (9.4.1.4)
    std::span<const std::uint8_t> elements{};  // borrowed from the frame; may be empty
    std::size_t elementsOffset = 0;            // in octets of the frame
    bool isCut = false;  // the capture kept only the start of the elements, or none of them
};

// Reads an 802.11 frame that begins with its Frame Control field and has neither radio header nor
// frame check sequence. The elements are not parsed, so a frame never reads as cut. The error is
// never Damaged or MalformedHeader, which the frame itself cannot show.
HALVANE_EXPORT Result<BeaconFrame, SkipReason> parseBeaconFrame(
    std::span<const std::uint8_t> frame);

}  // namespace halvane::capture

#endif
