// Bandwidth Indication (IEEE 802.11be-2024, 9.4.2.319): the channel of a BSS of Wi-Fi 7 after a
// switch.
#ifndef HALVANE_AIR_BANDWIDTH_INDICATION_H
#define HALVANE_AIR_BANDWIDTH_INDICATION_H

#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/eht_operation.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"

namespace halvane::air {

// A bit of the parameters tells whether the channel has the bitmap of disabled subchannels;
// encode() writes the bitmap if it is there. setChannel() sets both.
struct HALVANE_EXPORT BandwidthIndication {
    static constexpr ElementId kId = ElementId::BandwidthIndication;

    BitOctets<1> parameters{};
    EhtOperationInformation channel{};
    ByteBuffer rest{};

    void setChannel(const EhtOperationInformation& value) {
        channel = value;
        parameters.setBit(1, value.disabledSubchannels.has_value());
    }

    static std::optional<BandwidthIndication> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const BandwidthIndication&, const BandwidthIndication&) = default;
};

}  // namespace halvane::air

#endif
