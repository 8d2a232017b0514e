// Operating Mode Notification (IEEE 802.11-2020, 9.4.2.165): the width and the streams that a
// station uses now.
#ifndef HALVANE_AIR_OPERATING_MODE_NOTIFICATION_H
#define HALVANE_AIR_OPERATING_MODE_NOTIFICATION_H

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

struct HALVANE_EXPORT OperatingModeNotification {
    static constexpr ElementId kId = ElementId::OperatingModeNotification;

    BitOctets<1> mode{};
    ByteBuffer rest{};

    // In MHz: 20, 40, 80, or 160 for 160 and 80+80.
    constexpr int channelWidth() const {
        const auto width = mode.bits(0, 2);
        return width == 2 && mode.bit(2) ? 160 : 20 << width;
    }
    constexpr bool isLdpcUnwanted() const { return mode.bit(3); }
    constexpr int streams() const { return static_cast<int>(mode.bits(4, 3)) + 1; }
    // Whether the streams are those of frames that are sent by beamforming to the station.
    constexpr bool isOfBeamforming() const { return mode.bit(7); }

    static std::optional<OperatingModeNotification> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const OperatingModeNotification&,
                           const OperatingModeNotification&) = default;
};

}  // namespace halvane::air

#endif
