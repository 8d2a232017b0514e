// EHT MAC Capabilities Information (802.11be-2024, 9.4.2.313.2), of the EHT Capabilities element.
//
// A plain value. Threads: as for an integer.
#ifndef HALVANE_AIR_EHT_MAC_CAPABILITIES_H
#define HALVANE_AIR_EHT_MAC_CAPABILITIES_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "halvane/air/bit_octets.h"

namespace halvane::air {

// The flags, by bit.
enum class EhtMacCapability : std::uint8_t {
    EpcsPriorityAccess = 0,
    OmControl = 1,
    TriggeredTxopSharingMode1 = 2,
    TriggeredTxopSharingMode2 = 3,
    RestrictedTwt = 4,
    ScsTrafficDescription = 5,
    MaximumAmpduLengthExponentExtension = 8,
    Trs = 9,
    TxopReturnInTxopSharingMode2 = 10,
    TwoBqrs = 11,
    UnsolicitedEpcsUpdate = 14,
};

struct EhtMacCapabilities {
    BitOctets<2> bits{};

    constexpr bool has(EhtMacCapability flag) const {
        return bits.bit(static_cast<std::size_t>(flag));
    }
    // Octets, at 2.4 GHz: 3895, 7991 or 11454; absent for the reserved value. In the other bands
    // the VHT or the HE 6 GHz Band Capabilities tell it.
    constexpr std::optional<int> maximumMpduLength() const {
        constexpr std::array<int, 3> kLengths = {3895, 7991, 11454};
        const auto value = bits.bits(6, 2);
        if (value >= kLengths.size()) return std::nullopt;
        return kLengths[value];
    }
    // 0: none; 2: unsolicited feedback; 3: also in reply to a request.
    constexpr int linkAdaptation() const { return static_cast<int>(bits.bits(12, 2)); }

    friend constexpr bool operator==(const EhtMacCapabilities&,
                                     const EhtMacCapabilities&) = default;
};

}  // namespace halvane::air

#endif
