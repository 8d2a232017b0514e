// Estimated Service Parameters Inbound (IEEE 802.11-2020, 9.4.2.173): what a station may expect to
// receive, by access category.
#ifndef HALVANE_AIR_ESTIMATED_SERVICE_PARAMETERS_H
#define HALVANE_AIR_ESTIMATED_SERVICE_PARAMETERS_H

#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/inline_list.h"

namespace halvane::air {

// The numbers of this element, which differ from those of AccessCategoryIndex.
enum class AccessCategory : std::uint8_t { Background = 0, BestEffort = 1, Video = 2, Voice = 3 };

// What a station may expect in one access category.
struct EstimatedService {
    BitOctets<3> fields{};

    constexpr AccessCategory category() const {
        return static_cast<AccessCategory>(fields.bits(0, 2));
    }
    constexpr bool usesAmsdu() const { return fields.bit(3); }
    constexpr bool usesAmpdu() const { return fields.bit(4); }
    // MPDUs; absent if no block acknowledgment is used.
    constexpr std::optional<int> blockAckWindow() const {
        constexpr int kSizes[] = {0, 2, 4, 6, 8, 16, 32, 64};
        const int size = kSizes[fields.bits(5, 3)];
        return size > 0 ? std::optional(size) : std::nullopt;
    }
    // The part of the time that is left for a new station, in 1/255.
    constexpr std::uint8_t airTimeFraction() const {
        return static_cast<std::uint8_t>(fields.bits(8, 8));
    }
    constexpr unsigned ppduDurationMicroseconds() const { return 50 * fields.bits(16, 8); }

    friend constexpr bool operator==(const EstimatedService&, const EstimatedService&) = default;
};

struct HALVANE_EXPORT EstimatedServiceParameters {
    static constexpr ElementId kId = ElementId::EstimatedServiceParametersInbound;

    InlineList<EstimatedService, 4> services{};
    ByteBuffer rest{};

    static std::optional<EstimatedServiceParameters> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const EstimatedServiceParameters&,
                           const EstimatedServiceParameters&) = default;
};

}  // namespace halvane::air

#endif
