// Builders of the elements in which access points tell of others: of those in the same device, and
// of the links of a multi-link device.
#ifndef TOOLS_MAKE_SAMPLES_MULTI_LINK_ELEMENTS_H
#define TOOLS_MAKE_SAMPLES_MULTI_LINK_ELEMENTS_H

#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/multi_link.h"

#include "tools/make_samples/access_point.h"
#include "tools/make_samples/bytes.h"

namespace halvane::samples {

// The rates with the membership selector of access points that demand hash-to-element.
Bytes withHashToElementAlone(Bytes rates);

// An access point in the same device, and its link if it is of the same multi-link device.
struct CoLocated {
    AccessPoint accessPoint{};
    std::optional<std::uint8_t> linkId{};
};
// Reduced Neighbor Report.
Bytes coLocated(const std::vector<CoLocated>& others);

// What a multi-link device tells in a frame of one of its links.
struct MultiLinkSetup {
    std::uint8_t mldNumber = 0;  // of its address, as in Network
    std::uint8_t linkId = 0;     // that sends
    int linkCount = 1;
    std::vector<air::PerStaProfile> profiles{};  // profileOfLink(); beacons have none
};
Bytes multiLinkOf(const MultiLinkSetup& setup);

// The Per-STA Profile of another link, for a probe response of `sender`: everything about the link
// that is not inherited from the sender.
air::PerStaProfile profileOfLink(std::uint8_t linkId, const AccessPoint& link,
                                 const AccessPoint& sender);

}  // namespace halvane::samples

#endif
