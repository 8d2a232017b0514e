// EHT Capabilities (802.11be-2024, 9.4.2.313): what a station can do since Wi-Fi 7.
#ifndef HALVANE_AIR_EHT_CAPABILITIES_H
#define HALVANE_AIR_EHT_CAPABILITIES_H

#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/eht_mac_capabilities.h"
#include "halvane/air/eht_mcs_sets.h"
#include "halvane/air/eht_phy_capabilities.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/air/he_phy_capabilities.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"

namespace halvane::air {

// The element alone does not tell its own layout: which maps it has follows from the HE
// Capabilities of its sender. decode() takes the octets of the maps together; mcsSets() decodes
// them.
struct HALVANE_EXPORT EhtCapabilities {
    static constexpr ElementId kId = ElementId::EhtCapabilities;

    EhtMacCapabilities mac{};
    EhtPhyCapabilities phy{};
    ByteBuffer sets{};  // Supported EHT-MCS And NSS Set and EHT PPE Thresholds

    // Absent if the octets are too few for the maps of a sender with these HE Capabilities.
    std::optional<EhtMcsSets> mcsSets(const HePhyCapabilities& he,
                                      EhtSender sender = EhtSender::AccessPoint) const {
        return EhtMcsSets::decode(sets.bytes(), phy, he, sender);
    }

    // Tells the maps too.
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink,
                                                 const HePhyCapabilities& he, EhtSender sender);

    static std::optional<EhtCapabilities> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const EhtCapabilities&, const EhtCapabilities&) = default;
};

}  // namespace halvane::air

#endif
