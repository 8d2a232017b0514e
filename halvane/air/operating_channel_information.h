// Operating Channel Information (IEEE 802.11-2020, 12.2.9): the channel that the sender believes to
// use, protected against an attacker who moves it elsewhere.
#ifndef HALVANE_AIR_OPERATING_CHANNEL_INFORMATION_H
#define HALVANE_AIR_OPERATING_CHANNEL_INFORMATION_H

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

struct HALVANE_EXPORT OperatingChannelInformation {
    static constexpr ElementId kId = ElementId::OperatingChannelInformation;

    std::uint8_t operatingClass = 0;  // of Annex E
    std::uint8_t primaryChannel = 0;
    std::uint8_t centerSegment1 =
        0;  // the channel number of the second segment of 80+80 MHz; else 0
    ByteBuffer rest{};

    static std::optional<OperatingChannelInformation> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const OperatingChannelInformation&,
                           const OperatingChannelInformation&) = default;
};

}  // namespace halvane::air

#endif
