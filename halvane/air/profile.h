// What a BSS is, from the elements of one of its beacons or probe responses: its channel, its
// generation, its rates, its security, its features, and everything that is wrong with it.
//
//     const BssProfile profile = profileOf(frame.elements, {frame.capabilities, ...}, {5180});
//     std::cout << securityName(*profile.security.name) << ' ' << profile.channel.span->width;
//
// Each derived value carries the rule that gave it and the elements that it was taken from.
// docs/air.md describes the rules. A profile owns all its data.
//
// Pure functions and plain values. Any thread may call them. Hostile elements cost time in
// proportion to their size.
#ifndef HALVANE_AIR_PROFILE_H
#define HALVANE_AIR_PROFILE_H

#include "halvane/air/bit_octets.h"
#include "halvane/air/bss_profile.h"
#include "halvane/base/export.h"

namespace halvane::air {

// `elements` are those of a beacon or probe response.
HALVANE_EXPORT BssProfile profileOf(Octets elements, const FixedFields& fixed = {},
                                    const RadioHint& radio = {});

}  // namespace halvane::air

#endif
