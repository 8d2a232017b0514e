// BSS Load (IEEE 802.11-2020, 9.4.2.27): how busy the access point and its channel are.
#ifndef HALVANE_AIR_BSS_LOAD_H
#define HALVANE_AIR_BSS_LOAD_H

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

struct HALVANE_EXPORT BssLoad {
    static constexpr ElementId kId = ElementId::BssLoad;

    std::uint16_t stationCount = 0;
    std::uint8_t channelUtilization = 0;           // busy time, in 1/255 of the time
    std::uint16_t availableAdmissionCapacity = 0;  // medium time left, in units of 32 us/s
    ByteBuffer rest{};

    static std::optional<BssLoad> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const BssLoad&, const BssLoad&) = default;
};

}  // namespace halvane::air

#endif
