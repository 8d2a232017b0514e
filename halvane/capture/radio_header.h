// What the receiving card said of a frame: the radio header that stands before it in a capture.
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

// A value that the header does not state is absent.
struct RadioInfo {
    std::optional<int> frequencyMHz{};      // middle of the primary channel
    std::optional<int> channel{};           // its number, as the header states it
    std::optional<int> signalDBm{};         // of several antennas, the first; never another unit
    std::optional<int> noiseDBm{};          // likewise
    bool hasFCS = false;                    // the frame ends in its frame check sequence
    bool isBadFCS = false;                  // the card received the frame damaged
    std::span<const std::uint8_t> frame{};  // what follows the header; borrowed from the packet
};

// Reads the radio header at the start of `packet`. The frame that the result holds ends where the
// packet ends, with its frame check sequence if the capture kept one: see withoutFCS().
//
// Absent for a malformed header: one longer than the packet, of an unknown version or magic, with
// fields beyond its own length, or around another medium's frame. A header with fields of an
// unknown kind is not malformed: where their length is not known, it is read up to them.
HALVANE_EXPORT std::optional<RadioInfo> parseRadioHeader(LinkType linkType,
                                                         std::span<const std::uint8_t> packet);

}  // namespace halvane::capture

#endif
