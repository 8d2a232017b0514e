// TID-to-Link Mapping (IEEE 802.11be-2024, 9.4.2.314): the links of an MLD on which frames of each
// TID are sent.
#ifndef HALVANE_AIR_TID_TO_LINK_MAPPING_H
#define HALVANE_AIR_TID_TO_LINK_MAPPING_H

#include <array>
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

// The direction of the frames that a mapping is for.
enum class TidToLinkDirection : std::uint8_t { Downlink = 0, Uplink = 1, Both = 2, Reserved = 3 };

struct HALVANE_EXPORT TidToLinkMapping {
    static constexpr ElementId kId = ElementId::TidToLinkMapping;

    static constexpr std::size_t kTids = 8;

    BitOctets<1> control{};  // encode() sets the bits of presence to what is there
    // Bit k: TID k has a mapping. Absent if every TID is mapped to every link.
    std::optional<BitOctets<1>> presence{};
    std::optional<std::uint16_t> switchTime{};        // TU: bits 10 to 25 of the TSF at the start
    std::optional<std::uint32_t> expectedDuration{};  // TU, below 2^24
    std::array<std::optional<std::uint16_t>, kTids> links{};  // bit k: link k
    ByteBuffer rest{};

    TidToLinkDirection direction() const {
        return static_cast<TidToLinkDirection>(control.bits(0, 2));
    }
    // Whether every TID is mapped to every link.
    bool isDefault() const { return control.bit(2); }

    static std::optional<TidToLinkMapping> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const TidToLinkMapping&, const TidToLinkMapping&) = default;
};

}  // namespace halvane::air

#endif
