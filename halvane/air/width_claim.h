// What the operation elements of a BSS tell of its width, one by one: those who ask why the width
// of a profile is what it is also see what else was told and lost.
//
// Plain values and pure functions. Any thread may call them.
#ifndef HALVANE_AIR_WIDTH_CLAIM_H
#define HALVANE_AIR_WIDTH_CLAIM_H

#include "halvane/air/bit_octets.h"
#include "halvane/air/channel.h"
#include "halvane/air/rule.h"
#include "halvane/air/source.h"
#include "halvane/base/export.h"
#include "halvane/base/inline_list.h"

namespace halvane::air {

// Centres are channel numbers of the band; 0: none.
struct WidthClaim {
    Source source{};            // an operation element
    Rule rule = Rule::None;     // how it is read; None: it tells no width
    int field = 0;              // its channel width; of HT Operation, the secondary channel offset
    int segment0 = 0;           // the centres that it tells
    int segment1 = 0;           // of WidthVhtExtendedNss, as HT Operation tells it
    int width = 0;              // MHz, as `rule` reads it; 0: it tells none
    int center1 = 0;            // of this width; 0: 20 MHz at the primary channel
    int center2 = 0;            // of the second segment of 80+80
    bool isPassedOver = false;  // VHT Operation at 2.4 or 6 GHz says nothing about the width

    friend constexpr bool operator==(const WidthClaim&, const WidthClaim&) = default;
};

// One of each element that tells a width.
using WidthClaims = InlineList<WidthClaim, 4>;

// Returns the claims of a beacon's elements, the latest generation first. The first that tells a
// width and is not passed over is that of profileOf(); if there is none, the width is 20 MHz. HE
// Operation counts if it holds 6 GHz or VHT Operation Information. Damaged elements do not count.
HALVANE_EXPORT WidthClaims widthClaimsOf(Octets elements, Band band);

}  // namespace halvane::air

#endif
