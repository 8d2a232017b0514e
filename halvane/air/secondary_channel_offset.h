// Secondary Channel Offset (IEEE 802.11-2020, 9.4.2.19): where the other half of a 40 MHz channel
// is.
#ifndef HALVANE_AIR_SECONDARY_CHANNEL_OFFSET_H
#define HALVANE_AIR_SECONDARY_CHANNEL_OFFSET_H

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

// The value 2 is reserved.
enum class SecondaryChannel : std::uint8_t { None = 0, Above = 1, Reserved = 2, Below = 3 };

struct HALVANE_EXPORT SecondaryChannelOffset {
    static constexpr ElementId kId = ElementId::SecondaryChannelOffset;

    std::uint8_t offset = 0;  // as a SecondaryChannel; values from 4 on are reserved
    ByteBuffer rest{};

    constexpr SecondaryChannel secondaryChannel() const {
        return offset <= 3 ? static_cast<SecondaryChannel>(offset) : SecondaryChannel::Reserved;
    }

    static std::optional<SecondaryChannelOffset> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const SecondaryChannelOffset&, const SecondaryChannelOffset&) = default;
};

}  // namespace halvane::air

#endif
