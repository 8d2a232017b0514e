// Interworking (IEEE 802.11-2020, 9.4.2.91): what kind of network it is and where it stands.
#ifndef HALVANE_AIR_INTERWORKING_H
#define HALVANE_AIR_INTERWORKING_H

#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/mac_address.h"

namespace halvane::air {

// What kind of network it is.
enum class AccessNetworkType : std::uint8_t {
    Private = 0,
    PrivateWithGuestAccess = 1,
    ChargeablePublic = 2,
    FreePublic = 3,
    PersonalDevice = 4,
    EmergencyServicesOnly = 5,
    TestOrExperimental = 14,
    Wildcard = 15,
};

// The group says what kind of place it is, the type which one of the group (tables 9-61 and 9-62).
struct VenueInfo {
    std::uint8_t group = 0;
    std::uint8_t type = 0;

    friend constexpr bool operator==(const VenueInfo&, const VenueInfo&) = default;
};

// The length tells which of the two optional fields are there.
struct HALVANE_EXPORT Interworking {
    static constexpr ElementId kId = ElementId::Interworking;

    BitOctets<1> options{};
    std::optional<VenueInfo> venue{};
    std::optional<MacAddress> hessid{};  // the same for all BSSs of a network
    ByteBuffer rest{};

    AccessNetworkType networkType() const { return AccessNetworkType(options.bits(0, 4)); }
    bool hasInternet() const { return options.bit(4); }
    bool needsAdditionalStep() const { return options.bit(5); }               // ASRA
    bool areEmergencyServicesReachable() const { return options.bit(6); }     // ESR
    bool isUnauthenticatedEmergencyAccess() const { return options.bit(7); }  // UESA

    static std::optional<Interworking> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const Interworking&, const Interworking&) = default;
};

}  // namespace halvane::air

#endif
