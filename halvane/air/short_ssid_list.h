// Short SSID List (IEEE 802.11ax-2021, 9.4.2.262): the networks for which a station asks, by the
// sums of their names.
#ifndef HALVANE_AIR_SHORT_SSID_LIST_H
#define HALVANE_AIR_SHORT_SSID_LIST_H

#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/ssid.h"

namespace halvane::air {

// The short SSID of a network (802.11ax, 9.4.2.170.3): the CRC-32 of its name's octets, by the
// polynomial of the frame check sequence.
HALVANE_EXPORT std::uint32_t shortSsidOf(const Ssid& ssid);

struct HALVANE_EXPORT ShortSsidList {
    static constexpr ElementId kId = ElementId::ShortSsidList;

    std::vector<std::uint32_t> shortSsids{};
    ByteBuffer rest{};

    static std::optional<ShortSsidList> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const ShortSsidList&, const ShortSsidList&) = default;
};

}  // namespace halvane::air

#endif
