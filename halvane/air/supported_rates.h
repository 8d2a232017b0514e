// Supported Rates and BSS Membership Selectors (IEEE 802.11-2020, 9.4.2.3): the first
// rates of a BSS.
#ifndef HALVANE_AIR_SUPPORTED_RATES_H
#define HALVANE_AIR_SUPPORTED_RATES_H

#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/air/rate_octet.h"
#include "halvane/base/export.h"
#include "halvane/base/inline_list.h"

namespace halvane::air {

// The standard allows eight; decode() takes as many as there are.
struct HALVANE_EXPORT SupportedRates {
    static constexpr ElementId kId = ElementId::SupportedRates;

    InlineList<RateOctet, 255> rates{};

    static std::optional<SupportedRates> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const SupportedRates&, const SupportedRates&) = default;
};

}  // namespace halvane::air

#endif
