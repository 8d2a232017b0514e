// Channel Switch Announcement (IEEE 802.11-2020, 9.4.2.18): the channel that a BSS moves to.
#ifndef HALVANE_AIR_CHANNEL_SWITCH_H
#define HALVANE_AIR_CHANNEL_SWITCH_H

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

struct HALVANE_EXPORT ChannelSwitch {
    static constexpr ElementId kId = ElementId::ChannelSwitch;

    std::uint8_t mode = 0;        // 0 or 1
    std::uint8_t newChannel = 0;  // channel number
    std::uint8_t count = 0;       // beacons until the switch; 0: at any time
    ByteBuffer rest{};

    // Whether stations send nothing until the switch.
    constexpr bool isQuiet() const { return mode == 1; }

    static std::optional<ChannelSwitch> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const ChannelSwitch&, const ChannelSwitch&) = default;
};

}  // namespace halvane::air

#endif
