// TIM (IEEE 802.11-2020, 9.4.2.5): the stations for which the access point holds frames.
#ifndef HALVANE_AIR_TIM_H
#define HALVANE_AIR_TIM_H

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

namespace halvane::air {

// The bitmap control and the bitmap may be missing together, as in S1G.
struct HALVANE_EXPORT Tim {
    static constexpr ElementId kId = ElementId::Tim;

    std::uint8_t dtimCount = 0;   // beacons until the next DTIM; 0: this beacon is one
    std::uint8_t dtimPeriod = 1;  // beacon intervals between DTIMs; 0 is reserved
    std::optional<BitOctets<1>> bitmapControl{};
    ByteBuffer partialBitmap{};  // of the association IDs, from that of firstAid() on

    constexpr bool hasGroupTraffic() const { return bitmapControl && bitmapControl->bit(0); }
    // The association ID of the bitmap's first bit.
    constexpr std::size_t firstAid() const {
        return bitmapControl ? 16 * static_cast<std::size_t>(bitmapControl->bits(1, 7)) : 0;
    }
    // Whether frames are held for the station.
    bool hasTraffic(std::size_t aid) const {
        return aid >= firstAid() && bitsOf(partialBitmap.bytes(), aid - firstAid(), 1) != 0;
    }

    static std::optional<Tim> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const Tim&, const Tim&) = default;
};

}  // namespace halvane::air

#endif
