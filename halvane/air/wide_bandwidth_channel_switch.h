// Wide Bandwidth Channel Switch (IEEE 802.11-2020, 9.4.2.160): the width of the channel that a BSS
// moves to.
#ifndef HALVANE_AIR_WIDE_BANDWIDTH_CHANNEL_SWITCH_H
#define HALVANE_AIR_WIDE_BANDWIDTH_CHANNEL_SWITCH_H

#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/air/vht_operation.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"

namespace halvane::air {

struct HALVANE_EXPORT WideBandwidthChannelSwitch {
    static constexpr ElementId kId = ElementId::WideBandwidthChannelSwitch;

    VhtOperationInformation channel{};  // as in VHT Operation, of the new channel
    ByteBuffer rest{};

    static std::optional<WideBandwidthChannelSwitch> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const WideBandwidthChannelSwitch&,
                           const WideBandwidthChannelSwitch&) = default;
};

}  // namespace halvane::air

#endif
