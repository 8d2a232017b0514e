// BSS Max Idle Period (IEEE 802.11-2020, 9.4.2.78): how long a station may be silent before the
// access point forgets it.
#ifndef HALVANE_AIR_BSS_MAX_IDLE_PERIOD_H
#define HALVANE_AIR_BSS_MAX_IDLE_PERIOD_H

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

struct HALVANE_EXPORT BssMaxIdlePeriod {
    static constexpr ElementId kId = ElementId::BssMaxIdlePeriod;

    std::uint16_t period = 1;  // 1000 TU; 0 is reserved
    BitOctets<1> options{};
    ByteBuffer rest{};

    // Whether only a protected frame counts as a sign of life.
    bool isProtectionRequired() const { return options.bit(0); }

    static std::optional<BssMaxIdlePeriod> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const BssMaxIdlePeriod&, const BssMaxIdlePeriod&) = default;
};

}  // namespace halvane::air

#endif
