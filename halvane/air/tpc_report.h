// TPC Report (IEEE 802.11-2020, 9.4.2.16): the power of the frame that holds it.
#ifndef HALVANE_AIR_TPC_REPORT_H
#define HALVANE_AIR_TPC_REPORT_H

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

struct HALVANE_EXPORT TpcReport {
    static constexpr ElementId kId = ElementId::TpcReport;

    std::int8_t transmitPower = 0;  // dBm
    std::int8_t linkMargin = 0;     // dB; reserved in a beacon
    ByteBuffer rest{};

    static std::optional<TpcReport> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const TpcReport&, const TpcReport&) = default;
};

}  // namespace halvane::air

#endif
