// OSEN (Wi-Fi Alliance Hotspot 2.0, vendor element 50-6F-9A, type 18): the security of a network
// for online sign-up with server authentication alone.
#ifndef HALVANE_AIR_OSEN_H
#define HALVANE_AIR_OSEN_H

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

struct HALVANE_EXPORT Osen {
    static constexpr OUI kOui = kWfaOUI;
    static constexpr std::uint8_t kType = 18;

    Rsn rsn{};  // without the version, which the element lacks: it stays 1

    static std::optional<Osen> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const Osen&, const Osen&) = default;
};

}  // namespace halvane::air

#endif
