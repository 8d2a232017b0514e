// RSN Override and RSN Override 2 (Wi-Fi Alliance WPA3, vendor elements 50-6F-9A, types 41 and 42):
// the security of a BSS for stations that know these elements, in place of that of the RSN element.
#ifndef HALVANE_AIR_RSN_OVERRIDE_H
#define HALVANE_AIR_RSN_OVERRIDE_H

#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/field_sink.h"
#include "halvane/air/rsn.h"
#include "halvane/base/export.h"
#include "halvane/base/oui.h"

namespace halvane::air {

struct HALVANE_EXPORT RsnOverride {
    static constexpr OUI kOui = kWfaOUI;
    static constexpr std::uint8_t kType = 41;

    Rsn rsn{};

    static std::optional<RsnOverride> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const RsnOverride&, const RsnOverride&) = default;
};

// For stations of Wi-Fi 7.
struct HALVANE_EXPORT RsnOverride2 {
    static constexpr OUI kOui = kWfaOUI;
    static constexpr std::uint8_t kType = 42;

    Rsn rsn{};

    static std::optional<RsnOverride2> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const RsnOverride2&, const RsnOverride2&) = default;
};

}  // namespace halvane::air

#endif
