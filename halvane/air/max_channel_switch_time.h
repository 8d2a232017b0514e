// Max Channel Switch Time (IEEE 802.11-2020): how long an access point is silent while
// it changes the channel.
#ifndef HALVANE_AIR_MAX_CHANNEL_SWITCH_TIME_H
#define HALVANE_AIR_MAX_CHANNEL_SWITCH_TIME_H

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

struct HALVANE_EXPORT MaxChannelSwitchTime {
    static constexpr ElementId kId = ElementId::MaxChannelSwitchTime;

    std::uint32_t switchTime = 0;  // TU, of 24 bits
    ByteBuffer rest{};

    static std::optional<MaxChannelSwitchTime> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const MaxChannelSwitchTime&, const MaxChannelSwitchTime&) = default;
};

}  // namespace halvane::air

#endif
