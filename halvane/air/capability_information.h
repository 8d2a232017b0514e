// The Capability Information field of beacons, of the profiles of nontransmitted BSSIDs and of the
// profiles of links (IEEE 802.11-2020, 9.4.1.4).
//
// A plain value. Threads: as for an integer.
#ifndef HALVANE_AIR_CAPABILITY_INFORMATION_H
#define HALVANE_AIR_CAPABILITY_INFORMATION_H

#include "halvane/air/bit_octets.h"

namespace halvane::air {

struct CapabilityInformation {
    BitOctets<2> fields{};

    constexpr bool isEss() const { return fields.bit(0); }
    constexpr bool isIbss() const { return fields.bit(1); }
    // Whether data frames are encrypted, by whatever cipher.
    constexpr bool hasPrivacy() const { return fields.bit(4); }
    constexpr bool hasShortPreamble() const { return fields.bit(5); }
    constexpr bool hasCriticalUpdate() const { return fields.bit(6); }
    constexpr bool hasNontransmittedCriticalUpdate() const { return fields.bit(7); }
    constexpr bool hasSpectrumManagement() const { return fields.bit(8); }
    constexpr bool hasQos() const { return fields.bit(9); }
    constexpr bool hasShortSlotTime() const { return fields.bit(10); }
    constexpr bool hasApsd() const { return fields.bit(11); }
    constexpr bool hasRadioMeasurement() const { return fields.bit(12); }
    constexpr bool hasEpd() const { return fields.bit(13); }

    friend constexpr bool operator==(const CapabilityInformation&,
                                     const CapabilityInformation&) = default;
};

}  // namespace halvane::air

#endif
