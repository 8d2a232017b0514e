// Spatial Reuse Parameter Set (IEEE 802.11ax-2021, 9.4.2.252): when stations may send over the
// frames of other BSSs.
#ifndef HALVANE_AIR_SPATIAL_REUSE_H
#define HALVANE_AIR_SPATIAL_REUSE_H

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

// The spatial reuse group (SRG): BSSs over whose frames more may be sent.
struct SpatialReuseGroup {
    std::uint8_t minOffset = 0;  // dB above -82 dBm
    std::uint8_t maxOffset = 0;  // dB above -82 dBm
    BitOctets<8> bssColors{};    // bit n: the colour n is a member
    BitOctets<8> partialBssids{};

    friend bool operator==(const SpatialReuseGroup&, const SpatialReuseGroup&) = default;
};

// Bits of the control octet tell which of the fields after it are there. encode() writes the fields
// that are there, so whoever adds or removes one does it by its setter.
struct HALVANE_EXPORT SpatialReuse {
    static constexpr ElementId kId = ElementId::SpatialReuse;

    BitOctets<1> control{};
    std::optional<std::uint8_t> nonSrgMaxOffset{};  // dB above -82 dBm
    std::optional<SpatialReuseGroup> srg{};
    ByteBuffer rest{};

    // Parameterized spatial reuse.
    constexpr bool isPsrDisallowed() const { return control.bit(0); }
    constexpr bool isNonSrgObssPdDisallowed() const { return control.bit(1); }
    constexpr bool isValue15Allowed() const { return control.bit(4); }  // in HE-SIG-A

    void setNonSrgMaxOffset(std::optional<std::uint8_t> value) {
        nonSrgMaxOffset = value;
        control.setBit(2, value.has_value());
    }
    void setSrg(const std::optional<SpatialReuseGroup>& value) {
        srg = value;
        control.setBit(3, value.has_value());
    }

    static std::optional<SpatialReuse> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const SpatialReuse&, const SpatialReuse&) = default;
};

}  // namespace halvane::air

#endif
