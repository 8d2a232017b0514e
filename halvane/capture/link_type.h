// The link types of captures whose packets contain an 802.11 frame.
//
// Free functions without state; any thread may call them.
#ifndef HALVANE_CAPTURE_LINK_TYPE_H
#define HALVANE_CAPTURE_LINK_TYPE_H

#include <optional>

#include "halvane/base/cxx20.h"
#include "halvane/base/export.h"

namespace halvane::capture {

// The header before the frame in each packet. The numbers are those of
// https://www.tcpdump.org/linktypes.html.
enum class LinkType : int {
    IEEE80211 = 105,  // nothing: the frame alone
    Prism = 119,      // a Prism header; in some captures an AVS header
    Radiotap = 127,
    AVS = 163,
    PPI = 192,
};

// Returns the link type of a number from a capture file; absent for every other number.
HALVANE_EXPORT std::optional<LinkType> linkTypeOfNumber(int number);

}  // namespace halvane::capture

#endif
