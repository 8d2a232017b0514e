// MU EDCA Parameter Set (IEEE 802.11ax-2021, 9.4.2.251): how stations contend for the medium after
// they sent in a frame of many stations.
#ifndef HALVANE_AIR_MU_EDCA_PARAMETER_SET_H
#define HALVANE_AIR_MU_EDCA_PARAMETER_SET_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/access_category.h"
#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"

namespace halvane::air {

struct HALVANE_EXPORT MuEdcaParameterSet {
    static constexpr ElementId kId = ElementId::MuEdcaParameterSet;

    struct Record {
        AccessPriority priority{};  // an AIFSN of 0 forbids contention
        ContentionWindow window{};
        std::uint8_t timer = 0;  // how long the parameters hold, in units of 8 TU; 0 is reserved

        friend bool operator==(const Record&, const Record&) = default;
    };

    ApQosInfo qosInfo{};
    std::array<Record, 4> records{};  // of best effort, background, video and voice
    ByteBuffer rest{};

    constexpr const Record& recordOf(AccessCategoryIndex category) const {
        return records[static_cast<std::size_t>(category)];
    }

    static std::optional<MuEdcaParameterSet> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const MuEdcaParameterSet&, const MuEdcaParameterSet&) = default;
};

}  // namespace halvane::air

#endif
