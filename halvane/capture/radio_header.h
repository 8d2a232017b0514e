// What the receiving card said of a frame: the header that stands before it in a capture.
//
// Free functions without state; any thread may call them.
#ifndef HALVANE_CAPTURE_RADIO_HEADER_H
#define HALVANE_CAPTURE_RADIO_HEADER_H

#include <cstdint>
#include <optional>
#include <span>

#include "halvane/base/export.h"

namespace halvane::capture {

// The link types whose packets hold an 802.11 frame, numbered as in
// https://www.tcpdump.org/linktypes.html.
enum class LinkType : int {
    IEEE80211 = 105,  // the frame alone
    Prism = 119,      // or, in some captures, an AVS header
    Radiotap = 127,
    AVS = 163,
    PPI = 192,
};

// Absent for every other link type.
HALVANE_EXPORT std::optional<LinkType> linkTypeOfNumber(int number);

struct RadioInfo {
    std::optional<int> frequencyMHz{};      // middle of the primary channel
    std::optional<int> channel{};           // number, where the header states one
    std::optional<int> signalDBm{};         // of several antennas, the first; never another unit
    std::optional<int> noiseDBm{};          // likewise
    bool hasFCS = false;                    // the frame ends in its frame check sequence
    bool isBadFCS = false;                  // the card received the frame damaged
    std::span<const std::uint8_t> frame{};  // what follows the header; borrowed from the packet
};

// Takes the radio header off `packet`. Absent for a malformed header: one longer than the packet,
// of an unknown version or magic, with fields beyond its own length, or around another medium's
// frame.
HALVANE_EXPORT std::optional<RadioInfo> parseRadioHeader(LinkType linkType,
                                                         std::span<const std::uint8_t> packet);

}  // namespace halvane::capture

#endif
