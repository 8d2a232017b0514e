// Roaming Consortium (IEEE 802.11-2020, 9.4.2.95): the organisations whose users the network takes.
#ifndef HALVANE_AIR_ROAMING_CONSORTIUM_H
#define HALVANE_AIR_ROAMING_CONSORTIUM_H

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

struct HALVANE_EXPORT RoamingConsortium {
    static constexpr ElementId kId = ElementId::RoamingConsortium;

    std::uint8_t anqpCount = 0;  // further organisations that ANQP tells; 255: 255 or more
    BitOctets<1> lengths{};      // of the first two; set() keeps them right
    // Identifiers of organisations, 3 or 5 octets each as a rule; empty if there are fewer.
    ByteBuffer first{};
    ByteBuffer second{};
    ByteBuffer third{};  // what the element holds after the second

    void set(const ByteBuffer& one, const ByteBuffer& two = {}, const ByteBuffer& three = {});

    static std::optional<RoamingConsortium> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const RoamingConsortium&, const RoamingConsortium&) = default;
};

}  // namespace halvane::air

#endif
