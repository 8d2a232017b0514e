// EHT PHY Capabilities Information (802.11be-2024, 9.4.2.313.3), of the EHT Capabilities element.
//
// A plain value. Threads: as for an integer.
#ifndef HALVANE_AIR_EHT_PHY_CAPABILITIES_H
#define HALVANE_AIR_EHT_PHY_CAPABILITIES_H

#include <array>
#include <cstddef>
#include <cstdint>

#include "halvane/air/bit_octets.h"

namespace halvane::air {

// The flags, by bit.
enum class EhtPhyCapability : std::uint8_t {
    Width320 = 1,
    Ru242InWiderBw = 2,
    Ndp4xLtf3200NsGi = 3,
    PartialBandwidthUlMuMimo = 4,
    SuBeamformer = 5,
    SuBeamformee = 6,
    Ng16SuFeedback = 25,
    Ng16MuFeedback = 26,
    Codebook42SuFeedback = 27,
    Codebook75MuFeedback = 28,
    TriggeredSuFeedback = 29,
    TriggeredMuPartialBwFeedback = 30,
    TriggeredCqiFeedback = 31,
    PartialBandwidthDlMuMimo = 32,
    PsrBasedSpatialReuse = 33,
    PowerBoostFactor = 34,
    MuPpdu4xLtf800NsGi = 35,
    NonTriggeredCqiFeedback = 40,
    TxHighQamSmallRu = 41,
    RxHighQamSmallRu = 42,
    PpeThresholdsPresent = 43,
    DupIn6Ghz = 55,
    Operating20RxWiderNdp = 56,
    NonOfdmaUlMuMimo80 = 57,
    NonOfdmaUlMuMimo160 = 58,
    NonOfdmaUlMuMimo320 = 59,
    MuBeamformer80 = 60,
    MuBeamformer160 = 61,
    MuBeamformer320 = 62,
    TbSoundingFeedbackRateLimit = 63,
    Rx1024QamInWiderDlOfdma = 64,
    Rx4096QamInWiderDlOfdma = 65,
    Only20Limited = 66,
    Only20TriggeredMuFullBwFeedback = 67,
    Only20Mru = 68,
};

struct EhtPhyCapabilities {
    BitOctets<9> bits{};

    constexpr bool has(EhtPhyCapability flag) const {
        return bits.bit(static_cast<std::size_t>(flag));
    }
    // Spatial streams of a sounding that a beamformee takes.
    constexpr int beamformeeStreams80() const { return field(7, 3) + 1; }
    constexpr int beamformeeStreams160() const { return field(10, 3) + 1; }
    constexpr int beamformeeStreams320() const { return field(13, 3) + 1; }
    constexpr int soundingDimensions80() const { return field(16, 3) + 1; }
    constexpr int soundingDimensions160() const { return field(19, 3) + 1; }
    constexpr int soundingDimensions320() const { return field(22, 3) + 1; }
    // Columns of the feedback of a beamformee.
    constexpr int maximumColumns() const { return field(36, 4) + 1; }
    // Microseconds: 0, 8, 16 or 20; without meaning if there are PPE thresholds.
    constexpr int nominalPacketPadding() const {
        constexpr std::array<int, 4> kPaddings = {0, 8, 16, 20};
        return kPaddings[static_cast<std::size_t>(field(44, 2))];
    }
    // The field Maximum Number Of Supported EHT-LTFs. Bit 0: more than the streams need; bits 1
    // and 2: at most 4 (0) or 8 (1) symbols without, bits 3 and 4: with multi-user MIMO.
    constexpr int maximumLtfs() const { return field(46, 5); }
    // Bits: 0, in 106+52 and 52+26 tones; 1, in 484+242 tones of 80 MHz; 2, of 160 MHz; 3, of
    // 320 MHz.
    constexpr int mcs15() const { return field(51, 4); }

    friend constexpr bool operator==(const EhtPhyCapabilities&,
                                     const EhtPhyCapabilities&) = default;

  private:
    constexpr int field(std::size_t first, std::size_t count) const {
        return static_cast<int>(bits.bits(first, count));
    }
};

}  // namespace halvane::air

#endif
