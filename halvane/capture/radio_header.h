// Reads the radio header, in which the receiving card describes a frame of a capture.
//
// The formats are radiotap (https://www.radiotap.org), PPI (Per-Packet Information specification
// 1.0.7), Prism and AVS (the header of the linux-wlan drivers, versions 1 and 2).
//
// Free functions without state; any thread may call them.
#ifndef HALVANE_CAPTURE_RADIO_HEADER_H
#define HALVANE_CAPTURE_RADIO_HEADER_H

#include <cstdint>
#include <optional>
#include <span>

#include "halvane/base/export.h"
#include "halvane/capture/link_type.h"

namespace halvane::capture {

// Values that the header lacks are absent.
struct RadioInfo {
    std::optional<int> frequencyMHz{};      // middle of the primary channel
    std::optional<int> channel{};           // its number as the header states it
    std::optional<int> signalDBm{};         // of the first antenna, if there are several; never in
                                            // another unit
    std::optional<int> noiseDBm{};          // likewise
    bool hasFCS = false;                    // the frame ends in its frame check sequence
    bool isBadFCS = false;                  // the card received the frame damaged
    std::span<const std::uint8_t> frame{};  // the packet after the header; borrowed from the packet
};

// Reads the radio header at the start of `packet`. The resulting frame ends with the packet. It
// includes its frame check sequence if the capture kept one: see withoutFCS().
//
// Absent for a malformed header: one that is longer than the packet, has an unknown version or
// magic, has fields beyond its own length, or precedes another medium's frame. A header with fields
// of an unknown kind is not malformed: if their length is unknown, the fields before them are read.
HALVANE_EXPORT std::optional<RadioInfo> parseRadioHeader(LinkType linkType,
                                                         std::span<const std::uint8_t> packet);

}  // namespace halvane::capture

#endif
