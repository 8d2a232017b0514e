// Hotspot 2.0 Indication (Wi-Fi Alliance Hotspot 2.0, vendor element 50-6F-9A, type 16).
#ifndef HALVANE_AIR_HOTSPOT_INDICATION_H
#define HALVANE_AIR_HOTSPOT_INDICATION_H

#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/field_sink.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/oui.h"

namespace halvane::air {

struct HALVANE_EXPORT HotspotIndication {
    static constexpr OUI kOui = kWfaOUI;
    static constexpr std::uint8_t kType = 16;

    // encode() takes the two fields below as they are, and changes no bit here.
    BitOctets<1> configuration{};
    std::optional<std::uint16_t> ppsMoId{};
    std::optional<std::uint16_t> anqpDomainId{};  // the same: the same replies to ANQP; 0: unique
    ByteBuffer rest{};

    bool isDgafDisabled() const { return configuration.bit(0); }  // no group frames go downstream
    bool hasPpsMoId() const { return configuration.bit(1); }
    bool hasAnqpDomainId() const { return configuration.bit(2); }
    // 1 to 3, of Hotspot 2.0.
    int release() const { return static_cast<int>(configuration.bits(4, 4)) + 1; }

    static std::optional<HotspotIndication> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const HotspotIndication&, const HotspotIndication&) = default;
};

}  // namespace halvane::air

#endif
