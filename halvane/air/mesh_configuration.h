// Mesh Configuration (IEEE 802.11-2020, 9.4.2.97): the protocols of a mesh and the state of a
// station in it.
#ifndef HALVANE_AIR_MESH_CONFIGURATION_H
#define HALVANE_AIR_MESH_CONFIGURATION_H

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

struct HALVANE_EXPORT MeshConfiguration {
    static constexpr ElementId kId = ElementId::MeshConfiguration;
    static constexpr std::uint8_t kVendorProtocol = 255;  // of each of the first five fields

    std::uint8_t pathSelection = 1;      // 1: HWMP
    std::uint8_t metric = 1;             // 1: airtime
    std::uint8_t congestionControl = 0;  // 0: none; 1: signaling
    std::uint8_t synchronization = 1;    // 1: neighbor offset
    std::uint8_t authentication = 0;     // 0: none; 1: SAE; 2: 802.1X
    BitOctets<1> formation{};
    BitOctets<1> capability{};
    ByteBuffer rest{};

    bool isConnectedToGate() const { return formation.bit(0); }
    int peerings() const { return static_cast<int>(formation.bits(1, 6)); }  // 63: 63 or more
    bool isConnectedToAuthenticationServer() const { return formation.bit(7); }

    bool acceptsPeerings() const { return capability.bit(0); }
    bool isMccaSupported() const { return capability.bit(1); }
    bool isMccaEnabled() const { return capability.bit(2); }
    bool isForwarding() const { return capability.bit(3); }
    bool isMbcaEnabled() const { return capability.bit(4); }
    bool isAdjustingTbtt() const { return capability.bit(5); }
    bool isPowerSaving() const { return capability.bit(6); }

    static std::optional<MeshConfiguration> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const MeshConfiguration&, const MeshConfiguration&) = default;
};

}  // namespace halvane::air

#endif
