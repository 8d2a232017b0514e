// P2P (Wi-Fi Alliance Wi-Fi Direct, vendor element 50-6F-9A, type 9): stations that form networks
// among themselves.
#ifndef HALVANE_AIR_P2P_H
#define HALVANE_AIR_P2P_H

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/field_sink.h"
#include "halvane/air/vendor_attribute.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/mac_address.h"
#include "halvane/base/oui.h"

namespace halvane::air {

// The flags of the P2P Capability attribute: those of the device, then from 8 on of its group.
enum class P2pCapability : std::uint8_t {
    ServiceDiscovery = 0,
    ClientDiscoverability = 1,
    ConcurrentOperation = 2,
    InfrastructureManaged = 3,
    DeviceLimit = 4,
    InvitationProcedure = 5,
    GroupOwner = 8,
    PersistentGroup = 9,
    GroupLimit = 10,
    IntraBssDistribution = 11,
    CrossConnection = 12,
    PersistentReconnect = 13,
    GroupFormation = 14,
    IpAddressAllocation = 15,
};

// Of the P2P Device Info attribute.
struct P2pDeviceInfo {
    MacAddress address{};
    std::uint16_t configMethods = 0;  // as in WPS
    std::array<std::uint8_t, 8> primaryDeviceType{};
    std::vector<std::array<std::uint8_t, 8>> secondaryDeviceTypes{};
    std::uint16_t nameType = 0x1011;  // the WPS attribute Device Name
    ByteBuffer name{};
    ByteBuffer rest{};

    friend bool operator==(const P2pDeviceInfo&, const P2pDeviceInfo&) = default;
};

struct HALVANE_EXPORT P2p {
    static constexpr OUI kOui = kWfaOUI;
    static constexpr std::uint8_t kType = 9;

    VendorAttributes attributes{};

    // False if there is no P2P Capability attribute.
    bool has(P2pCapability flag) const;
    // Of the P2P Device ID or the P2P Device Info attribute.
    std::optional<MacAddress> deviceAddress() const;
    // Absent if the attribute is missing or too short.
    std::optional<P2pDeviceInfo> deviceInfo() const;

    static std::optional<P2p> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const P2p&, const P2p&) = default;
};

}  // namespace halvane::air

#endif
