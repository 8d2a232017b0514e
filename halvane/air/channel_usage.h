// Channel Usage (IEEE 802.11-2020, 9.4.2.85): channels for networks without this access point.
#ifndef HALVANE_AIR_CHANNEL_USAGE_H
#define HALVANE_AIR_CHANNEL_USAGE_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/inline_list.h"

namespace halvane::air {

// A channel, by its operating class and its number there.
struct UsageChannel {
    std::uint8_t operatingClass = 0;  // of Annex E
    std::uint8_t channel = 0;

    friend constexpr bool operator==(const UsageChannel&, const UsageChannel&) = default;
};

struct HALVANE_EXPORT ChannelUsage {
    static constexpr ElementId kId = ElementId::ChannelUsage;

    static constexpr std::size_t kMaxChannels = 127;

    std::uint8_t mode = 0;  // 0: for networks of other kinds; 1: for direct links off the channel
    InlineList<UsageChannel, kMaxChannels> channels{};
    ByteBuffer rest{};

    static std::optional<ChannelUsage> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const ChannelUsage&, const ChannelUsage&) = default;
};

}  // namespace halvane::air

#endif
