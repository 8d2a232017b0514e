// BSS AC Access Delay (IEEE 802.11-2020, 9.4.2.43): how long frames wait for the medium. WAPI uses
// the same element ID.
#ifndef HALVANE_AIR_BSS_AC_ACCESS_DELAY_H
#define HALVANE_AIR_BSS_AC_ACCESS_DELAY_H

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

// A delay is 0 below 8 microseconds, then a logarithmic scale up to 252 (at least 5 milliseconds);
// 253: no station uses the category; 254: not available; 255: reserved.
struct HALVANE_EXPORT BssAcAccessDelay {
    static constexpr ElementId kId = ElementId::BssAcAccessDelay;

    std::uint8_t bestEffort = 0;
    std::uint8_t background = 0;
    std::uint8_t video = 0;
    std::uint8_t voice = 0;
    ByteBuffer rest{};

    static std::optional<BssAcAccessDelay> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const BssAcAccessDelay&, const BssAcAccessDelay&) = default;
};

}  // namespace halvane::air

#endif
