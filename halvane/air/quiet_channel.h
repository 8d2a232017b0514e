// Quiet Channel (IEEE 802.11-2020, 9.4.2.164): when the secondary 80 MHz of a BSS are quiet.
#ifndef HALVANE_AIR_QUIET_CHANNEL_H
#define HALVANE_AIR_QUIET_CHANNEL_H

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

// When the channel is quiet.
struct QuietInterval {
    std::uint8_t count = 0;      // beacons before the first quiet interval; 0 is reserved
    std::uint8_t period = 0;     // beacons from one to the next; 0: it comes once
    std::uint16_t duration = 0;  // TU
    std::uint16_t offset = 0;    // TU after the beacon

    friend constexpr bool operator==(const QuietInterval&, const QuietInterval&) = default;
};

struct HALVANE_EXPORT QuietChannel {
    static constexpr ElementId kId = ElementId::QuietChannel;

    std::uint8_t apQuietMode = 0;             // 1: stations may use the primary 80 MHz meanwhile
    std::optional<QuietInterval> interval{};  // if apQuietMode is 1
    ByteBuffer rest{};

    static std::optional<QuietChannel> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const QuietChannel&, const QuietChannel&) = default;
};

}  // namespace halvane::air

#endif
