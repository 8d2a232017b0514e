// Extended Supported Rates and BSS Membership Selectors (IEEE 802.11-2020,
// 9.4.2.12): the rates for which Supported Rates has no room.
#ifndef HALVANE_AIR_EXTENDED_SUPPORTED_RATES_H
#define HALVANE_AIR_EXTENDED_SUPPORTED_RATES_H

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

// decode() takes no octet for no rate.
struct HALVANE_EXPORT ExtendedSupportedRates {
    static constexpr ElementId kId = ElementId::ExtendedSupportedRates;

    InlineList<RateOctet, 255> rates{};

    static std::optional<ExtendedSupportedRates> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const ExtendedSupportedRates&, const ExtendedSupportedRates&) = default;
};

}  // namespace halvane::air

#endif
