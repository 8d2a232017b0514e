// Multiple BSSID-Index (IEEE 802.11-2020, 9.4.2.73): which BSSID of a set a profile is of.
#ifndef HALVANE_AIR_MULTIPLE_BSSID_INDEX_H
#define HALVANE_AIR_MULTIPLE_BSSID_INDEX_H

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

struct HALVANE_EXPORT MultipleBssidIndex {
    static constexpr ElementId kId = ElementId::MultipleBssidIndex;

    std::uint8_t index = 0;                    // from 1 on; 0 is that of the transmitted BSSID
    std::optional<std::uint8_t> dtimPeriod{};  // beacons; in beacons alone
    std::optional<std::uint8_t> dtimCount{};   // beacons before the next DTIM
    ByteBuffer rest{};

    static std::optional<MultipleBssidIndex> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const MultipleBssidIndex&, const MultipleBssidIndex&) = default;
};

}  // namespace halvane::air

#endif
