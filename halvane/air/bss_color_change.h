// BSS Color Change Announcement (IEEE 802.11ax-2021, 9.4.2.254): the colour that a BSS takes, and
// when.
#ifndef HALVANE_AIR_BSS_COLOR_CHANGE_H
#define HALVANE_AIR_BSS_COLOR_CHANGE_H

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

struct HALVANE_EXPORT BssColorChange {
    static constexpr ElementId kId = ElementId::BssColorChange;

    std::uint8_t countdown = 0;  // beacons until the change; 0: at this beacon
    BitOctets<1> newColorInformation{};
    ByteBuffer rest{};

    // 1 to 63, or 0 for none.
    constexpr int newBssColor() const { return static_cast<int>(newColorInformation.bits(0, 6)); }

    static std::optional<BssColorChange> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const BssColorChange&, const BssColorChange&) = default;
};

}  // namespace halvane::air

#endif
