// What the elements of a BSS tell of other BSSs: neighbours, links of its multi-link device, and
// networks that share its beacon.
#ifndef HALVANE_AIR_PROFILE_LINKS_INTERNAL_H
#define HALVANE_AIR_PROFILE_LINKS_INTERNAL_H

#include <optional>

#include "halvane/air/bss_profile.h"
#include "halvane/air/element_index_internal.h"
#include "halvane/air/multi_link.h"
#include "halvane/air/neighbor.h"
#include "halvane/air/source.h"
#include "halvane/base/mac_address.h"

namespace halvane::air {

Neighbors neighborsIn(const ElementIndex& index);

// The first element of the type Basic that can be read.
struct BasicMultiLink {
    MultiLink element{};
    Source source{};
};
std::optional<BasicMultiLink> basicMultiLinkOf(const ElementIndex& index);

// `bssid` is that of the sender, which is the address of its own link. `neighbors` are those that
// it tells.
MldProfile mldOf(const BasicMultiLink& multiLink, const MacAddress& bssid,
                 const Neighbors& neighbors);

std::optional<int> maxBssidIndicatorOf(const ElementIndex& index);

}  // namespace halvane::air

#endif
