// RSN Extension (IEEE 802.11-2020, 9.4.2.241) and RSNX Override (Wi-Fi Alliance WPA3, vendor
// element 50-6F-9A, type 43): capabilities that the RSN element has no room for.
#ifndef HALVANE_AIR_RSNX_H
#define HALVANE_AIR_RSNX_H

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
#include "halvane/base/oui.h"

namespace halvane::air {

// By bit; 802.11az and the Wi-Fi Alliance's WPA3 add to those of the clause.
enum class RsnxCapability : std::uint8_t {
    ProtectedTwt = 4,
    SaeHashToElement = 5,
    SaePk = 6,
    ProtectedWurFrames = 7,
    SecureLtf = 8,
    SecureRtt = 9,
    UrnmMfprX20 = 10,
    ProtectedAnnounce = 11,
    Pbac = 12,
    ExtendedS1gActionProtection = 13,
    SppAmsdu = 14,
    UrnmMfpr = 15,
    KekInPasn = 18,
    SsidProtection = 21,
};

struct HALVANE_EXPORT Rsnx {
    static constexpr ElementId kId = ElementId::Rsnx;

    // The four lowest bits are the number of octets minus 1. setCapability() keeps them right.
    ByteBuffer capabilities{0x00};
    ByteBuffer rest{};  // the octets past that number, which hold no capabilities

    bool has(RsnxCapability flag) const {
        return bitsOf(capabilities.bytes(), static_cast<std::size_t>(flag), 1) != 0;
    }
    void setCapability(RsnxCapability flag);

    static std::optional<Rsnx> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const Rsnx&, const Rsnx&) = default;
};

// In place of the RSN Extension, for stations that know RSN Override.
struct HALVANE_EXPORT RsnxOverride {
    static constexpr OUI kOui = kWfaOUI;
    static constexpr std::uint8_t kType = 43;

    Rsnx rsnx{};

    static std::optional<RsnxOverride> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const RsnxOverride&, const RsnxOverride&) = default;
};

}  // namespace halvane::air

#endif
