// Power Constraint (IEEE 802.11-2020, 9.4.2.13): by how much stations stay below the power that
// Country allows.
#ifndef HALVANE_AIR_POWER_CONSTRAINT_H
#define HALVANE_AIR_POWER_CONSTRAINT_H

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

struct HALVANE_EXPORT PowerConstraint {
    static constexpr ElementId kId = ElementId::PowerConstraint;

    std::uint8_t localConstraint = 0;  // dB
    ByteBuffer rest{};

    static std::optional<PowerConstraint> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const PowerConstraint&, const PowerConstraint&) = default;
};

}  // namespace halvane::air

#endif
