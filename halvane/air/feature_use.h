// The features of a BSS with the elements that tell them.
//
// Plain values and pure functions. Any thread may call them.
#ifndef HALVANE_AIR_FEATURE_USE_H
#define HALVANE_AIR_FEATURE_USE_H

#include "halvane/air/bit_octets.h"
#include "halvane/air/feature.h"
#include "halvane/air/source.h"
#include "halvane/base/export.h"
#include "halvane/base/inline_list.h"

namespace halvane::air {

struct FeatureUse {
    Feature feature = Feature::RadioMeasurement;  // what is offered
    Source source{};                              // the most telling element, if there are several

    friend constexpr bool operator==(const FeatureUse&, const FeatureUse&) = default;
};

// In the order of the enumerators.
using FeatureUses = InlineList<FeatureUse, kFeatureCount>;

// Returns the features of profileOf() for the elements of a beacon or probe response.
HALVANE_EXPORT FeatureUses featureUsesOf(Octets elements);

}  // namespace halvane::air

#endif
