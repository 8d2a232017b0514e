// VHT Operation (IEEE 802.11-2020, 9.4.2.158): the channel of a BSS of 80 MHz and more at 5 GHz.
#ifndef HALVANE_AIR_VHT_OPERATION_H
#define HALVANE_AIR_VHT_OPERATION_H

#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/air/mcs_map.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"

namespace halvane::air {

// The first three octets, which HE Operation may hold too (9.4.2.249). Centre frequencies are
// channel numbers of the band; 0 for none.
struct HALVANE_EXPORT VhtOperationInformation {
    std::uint8_t channelWidth = 0;  // 0: HT Operation decides; 1: 80 MHz or more; 2, 3: deprecated
    std::uint8_t centerSegment0 = 0;
    std::uint8_t centerSegment1 = 0;

    friend bool operator==(const VhtOperationInformation&,
                           const VhtOperationInformation&) = default;
};

struct HALVANE_EXPORT VhtOperation {
    static constexpr ElementId kId = ElementId::VhtOperation;

    VhtOperationInformation information{};
    VhtMcsMap basicMcs{};  // that every station of the BSS supports
    ByteBuffer rest{};

    static std::optional<VhtOperation> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const VhtOperation&, const VhtOperation&) = default;
};

}  // namespace halvane::air

#endif
