// Channel Switch Wrapper (IEEE 802.11-2020, 9.4.2.162): what else changes with the channel.
#ifndef HALVANE_AIR_CHANNEL_SWITCH_WRAPPER_H
#define HALVANE_AIR_CHANNEL_SWITCH_WRAPPER_H

#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bandwidth_indication.h"
#include "halvane/air/bit_octets.h"
#include "halvane/air/country.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/air/transmit_power_envelope.h"
#include "halvane/air/wide_bandwidth_channel_switch.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"

namespace halvane::air {

struct HALVANE_EXPORT ChannelSwitchWrapper {
    static constexpr ElementId kId = ElementId::ChannelSwitchWrapper;

    // At most one of the decoded forms is there, as `id` and `extension` tell. `body` is that of
    // any other subelement, after the extension.
    struct Subelement {
        std::uint8_t id = 0;
        std::optional<std::uint8_t> extension{};  // of the ID 255, if it has octets
        std::optional<Country> newCountry{};
        std::optional<WideBandwidthChannelSwitch> wideBandwidth{};
        std::optional<TransmitPowerEnvelope> newPower{};
        std::optional<BandwidthIndication> bandwidth{};
        ByteBuffer body{};

        friend bool operator==(const Subelement&, const Subelement&) = default;
    };

    std::vector<Subelement> subelements{};

    static std::optional<ChannelSwitchWrapper> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const ChannelSwitchWrapper&, const ChannelSwitchWrapper&) = default;
};

}  // namespace halvane::air

#endif
