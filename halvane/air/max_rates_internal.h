// How the highest rates are derived.
#ifndef HALVANE_AIR_MAX_RATES_INTERNAL_H
#define HALVANE_AIR_MAX_RATES_INTERNAL_H

#include <optional>

#include "halvane/air/eht_capabilities.h"
#include "halvane/air/element_index_internal.h"
#include "halvane/air/he_capabilities.h"
#include "halvane/air/ht_capabilities.h"
#include "halvane/air/max_rates.h"
#include "halvane/air/vht_capabilities.h"

namespace halvane::air {

// The elements that tell of rates; absent where missing or damaged.
struct CapabilityElements {
    explicit CapabilityElements(const ElementIndex& index)
        : ht(index.decode<HtCapabilities>()),
          vht(index.decode<VhtCapabilities>()),
          he(index.decode<HeCapabilities>()),
          eht(index.decode<EhtCapabilities>()) {}

    std::optional<HtCapabilities> ht;
    std::optional<VhtCapabilities> vht;
    std::optional<HeCapabilities> he;
    std::optional<EhtCapabilities> eht;
};

// `width` is that of the BSS, in MHz.
MaxRates maxRatesOf(const ElementIndex& index, const CapabilityElements& capabilities, int width);

}  // namespace halvane::air

#endif
