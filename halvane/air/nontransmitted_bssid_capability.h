// Nontransmitted BSSID Capability (IEEE 802.11-2020, 9.4.2.71): the capabilities of a network that
// has no beacon of its own.
#ifndef HALVANE_AIR_NONTRANSMITTED_BSSID_CAPABILITY_H
#define HALVANE_AIR_NONTRANSMITTED_BSSID_CAPABILITY_H

#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/capability_information.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"

namespace halvane::air {

struct HALVANE_EXPORT NontransmittedBssidCapability {
    static constexpr ElementId kId = ElementId::NontransmittedBssidCapability;

    CapabilityInformation capabilities{};
    ByteBuffer rest{};  // of a DMG access point: what it has in place of a beacon interval

    static std::optional<NontransmittedBssidCapability> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const NontransmittedBssidCapability&,
                           const NontransmittedBssidCapability&) = default;
};

}  // namespace halvane::air

#endif
