// UORA Parameter Set (IEEE 802.11ax-2021, 9.4.2.250): the contention window of random access by
// OFDMA.
#ifndef HALVANE_AIR_UORA_PARAMETER_SET_H
#define HALVANE_AIR_UORA_PARAMETER_SET_H

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

struct HALVANE_EXPORT UoraParameterSet {
    static constexpr ElementId kId = ElementId::UoraParameterSet;

    BitOctets<1> range{};
    ByteBuffer rest{};

    constexpr int minWindow() const { return (1 << range.bits(0, 3)) - 1; }
    constexpr int maxWindow() const { return (1 << range.bits(3, 3)) - 1; }

    static std::optional<UoraParameterSet> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const UoraParameterSet&, const UoraParameterSet&) = default;
};

}  // namespace halvane::air

#endif
