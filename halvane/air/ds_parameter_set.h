// DSSS Parameter Set (IEEE 802.11-2020, 9.4.2.4): the channel of a BSS at 2.4 GHz.
#ifndef HALVANE_AIR_DS_PARAMETER_SET_H
#define HALVANE_AIR_DS_PARAMETER_SET_H

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

struct HALVANE_EXPORT DsParameterSet {
    static constexpr ElementId kId = ElementId::DsParameterSet;

    std::uint8_t currentChannel = 0;  // channel number
    ByteBuffer rest{};

    static std::optional<DsParameterSet> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const DsParameterSet&, const DsParameterSet&) = default;
};

}  // namespace halvane::air

#endif
