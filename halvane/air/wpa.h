// WPA (Wi-Fi Alliance, vendor element 00-50-F2, type 1): the ciphers and the key management of a
// BSS before IEEE 802.11i.
#ifndef HALVANE_AIR_WPA_H
#define HALVANE_AIR_WPA_H

#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/field_sink.h"
#include "halvane/air/rsn.h"
#include "halvane/air/suite.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/oui.h"

namespace halvane::air {

// Every field after the version may be missing; the fields after a missing one are missing too.
struct HALVANE_EXPORT Wpa {
    static constexpr OUI kOui = kWPAOUI;
    static constexpr std::uint8_t kType = kWPAType;

    std::uint16_t version = 1;
    std::optional<Suite> group{};
    std::optional<Rsn::Suites> pairwise{};
    std::optional<Rsn::Suites> akms{};
    std::optional<BitOctets<2>> capabilities{};  // as those of RSN
    ByteBuffer rest{};

    static std::optional<Wpa> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const Wpa&, const Wpa&) = default;
};

}  // namespace halvane::air

#endif
