// Mobility Domain (IEEE 802.11-2020, 9.4.2.46): the access points between which a station may
// change by Fast BSS Transition.
#ifndef HALVANE_AIR_MOBILITY_DOMAIN_H
#define HALVANE_AIR_MOBILITY_DOMAIN_H

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"

namespace halvane::air {

struct HALVANE_EXPORT MobilityDomain {
    static constexpr ElementId kId = ElementId::MobilityDomain;

    std::array<std::uint8_t, 2> identifier{};  // MDID
    BitOctets<1> capability{};
    ByteBuffer rest{};

    bool isOverDs() const { return capability.bit(0); }
    bool hasResourceRequests() const { return capability.bit(1); }

    static std::optional<MobilityDomain> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const MobilityDomain&, const MobilityDomain&) = default;
};

}  // namespace halvane::air

#endif
