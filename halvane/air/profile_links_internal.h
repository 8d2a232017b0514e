// What the elements of a BSS tell of other BSSs: neighbours, links of its multi-link device, and
// networks that share its beacon.
#ifndef HALVANE_AIR_PROFILE_LINKS_INTERNAL_H
#define HALVANE_AIR_PROFILE_LINKS_INTERNAL_H

#include <optional>

#include "halvane/air/bss_profile.h"
#include "halvane/air/element_index_internal.h"

namespace halvane::air {

Neighbors neighborsIn(const ElementIndex& index);

// `bssid` is that of the sender, which is the address of its own link. `neighbors` are those that
// it tells.
std::optional<MldProfile> mldOf(const ElementIndex& index, const MacAddress& bssid,
                                const Neighbors& neighbors);

std::optional<int> maxBssidIndicatorOf(const ElementIndex& index);

}  // namespace halvane::air

#endif
