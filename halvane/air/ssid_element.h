// SSID (IEEE 802.11-2020, 9.4.2.2): the name of the network.
#ifndef HALVANE_AIR_SSID_ELEMENT_H
#define HALVANE_AIR_SSID_ELEMENT_H

#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/base/export.h"
#include "halvane/base/ssid.h"

namespace halvane::air {

// decode() fails for more than 32 octets.
struct HALVANE_EXPORT SsidElement {
    static constexpr ElementId kId = ElementId::Ssid;

    Ssid ssid{};  // in a probe request, an empty name stands for every network

    static std::optional<SsidElement> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const SsidElement&, const SsidElement&) = default;
};

}  // namespace halvane::air

#endif
