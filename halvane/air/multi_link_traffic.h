// Multi-Link Traffic Indication (IEEE 802.11be-2024, 9.4.2.315): on which links frames wait for the
// stations of the TIM.
#ifndef HALVANE_AIR_MULTI_LINK_TRAFFIC_H
#define HALVANE_AIR_MULTI_LINK_TRAFFIC_H

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

struct HALVANE_EXPORT MultiLinkTraffic {
    static constexpr ElementId kId = ElementId::MultiLinkTraffic;

    BitOctets<2> control{};
    ByteBuffer bitmaps{};  // one after the other, filled up with zero bits

    // The AID of the first bit of the TIM's bitmap that has a bitmap here.
    std::uint16_t aidOffset() const { return static_cast<std::uint16_t>(control.bits(4, 11)); }
    // The bits of each bitmap: one for each link from 0 on.
    std::size_t bitmapSize() const { return control.bits(0, 4) + 1; }
    // The links on which frames wait for the station `index` of those that the TIM names from
    // aidOffset() on: bit k for link k. Absent past the end. Filling bits may look like bitmaps of
    // no link.
    std::optional<std::uint16_t> links(std::size_t index) const;

    static std::optional<MultiLinkTraffic> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const MultiLinkTraffic&, const MultiLinkTraffic&) = default;
};

}  // namespace halvane::air

#endif
