// Quiet (IEEE 802.11-2020, 9.4.2.22): an interval in which no station of the BSS sends.
#ifndef HALVANE_AIR_QUIET_H
#define HALVANE_AIR_QUIET_H

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

struct HALVANE_EXPORT Quiet {
    static constexpr ElementId kId = ElementId::Quiet;

    std::uint8_t count = 1;      // beacon intervals until the one with the interval; 0 is reserved
    std::uint8_t period = 0;     // beacon intervals between two such; 0: it comes once
    std::uint16_t duration = 0;  // TU
    std::uint16_t offset = 0;    // TU after the start of the beacon interval
    ByteBuffer rest{};

    static std::optional<Quiet> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const Quiet&, const Quiet&) = default;
};

}  // namespace halvane::air

#endif
