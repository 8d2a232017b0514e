// Extended BSS Load (IEEE 802.11-2020, 9.4.2.159): how busy an access point of Wi-Fi 5 and its
// channel are.
#ifndef HALVANE_AIR_EXTENDED_BSS_LOAD_H
#define HALVANE_AIR_EXTENDED_BSS_LOAD_H

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

struct HALVANE_EXPORT ExtendedBssLoad {
    static constexpr ElementId kId = ElementId::ExtendedBssLoad;

    std::uint16_t muMimoStationCount = 0;            // stations that can take part in MU-MIMO
    std::uint8_t spatialStreamUnderutilization = 0;  // in 1/255 of the busy time
    std::uint8_t secondary20Utilization = 0;         // busy time, in 1/255 of the time
    std::uint8_t secondary40Utilization = 0;
    std::uint8_t secondary80Utilization = 0;
    ByteBuffer rest{};

    static std::optional<ExtendedBssLoad> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const ExtendedBssLoad&, const ExtendedBssLoad&) = default;
};

}  // namespace halvane::air

#endif
