// The features that the elements of a BSS tell.
#ifndef HALVANE_AIR_PROFILE_FEATURES_INTERNAL_H
#define HALVANE_AIR_PROFILE_FEATURES_INTERNAL_H

#include "halvane/air/element_index_internal.h"
#include "halvane/air/feature.h"
#include "halvane/air/max_rates_internal.h"
#include "halvane/air/security_elements_internal.h"

namespace halvane::air {

Features featuresOf(const ElementIndex& index, const CapabilityElements& capabilities,
                    const SecurityElements& security);

}  // namespace halvane::air

#endif
