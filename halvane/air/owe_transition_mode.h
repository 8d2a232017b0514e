// OWE Transition Mode (Wi-Fi Alliance OWE, vendor element 50-6F-9A, type 28): the other half of a
// network that is both open and encrypted by OWE.
#ifndef HALVANE_AIR_OWE_TRANSITION_MODE_H
#define HALVANE_AIR_OWE_TRANSITION_MODE_H

#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/field_sink.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/mac_address.h"
#include "halvane/base/oui.h"

namespace halvane::air {

struct HALVANE_EXPORT OweTransitionMode {
    static constexpr OUI kOui = kWfaOUI;
    static constexpr std::uint8_t kType = 28;

    MacAddress bssid{};
    ByteBuffer ssid{};
    // If the other half is on another channel.
    std::optional<std::uint8_t> operatingClass{};
    std::optional<std::uint8_t> channel{};
    ByteBuffer rest{};

    static std::optional<OweTransitionMode> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const OweTransitionMode&, const OweTransitionMode&) = default;
};

}  // namespace halvane::air

#endif
