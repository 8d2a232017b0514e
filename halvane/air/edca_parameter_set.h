// EDCA Parameter Set (IEEE 802.11-2020, 9.4.2.28): how stations contend for the medium.
#ifndef HALVANE_AIR_EDCA_PARAMETER_SET_H
#define HALVANE_AIR_EDCA_PARAMETER_SET_H

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

struct HALVANE_EXPORT EdcaParameterSet {
    static constexpr ElementId kId = ElementId::EdcaParameterSet;

    ApQosInfo qosInfo{};
    std::uint8_t updateInfo = 0;          // of S1G; reserved otherwise
    std::array<EdcaRecord, 4> records{};  // of best effort, background, video and voice
    ByteBuffer rest{};

    constexpr const EdcaRecord& recordOf(AccessCategoryIndex category) const {
        return records[static_cast<std::size_t>(category)];
    }

    static std::optional<EdcaParameterSet> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const EdcaParameterSet&, const EdcaParameterSet&) = default;
};

}  // namespace halvane::air

#endif
