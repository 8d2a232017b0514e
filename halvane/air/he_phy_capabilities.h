// HE PHY Capabilities Information (802.11ax-2021, 9.4.2.248.3), of the HE Capabilities element.
//
// A plain value. Threads: as for an integer.
#ifndef HALVANE_AIR_HE_PHY_CAPABILITIES_H
#define HALVANE_AIR_HE_PHY_CAPABILITIES_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "halvane/air/bit_octets.h"

namespace halvane::air {

// The flags, by bit.
enum class HePhyCapability : std::uint8_t {
    Width40At2Ghz = 1,
    Width40And80 = 2,
    Width160 = 3,
    Width80Plus80 = 4,
    Ru242At2Ghz = 5,
    Ru242At5Ghz = 6,
    ClassA = 12,
    Ldpc = 13,
    SuPpdu1xLtf800NsGi = 14,
    Ndp4xLtf3200NsGi = 17,
    StbcTx80 = 18,
    StbcRx80 = 19,
    DopplerTx = 20,
    DopplerRx = 21,
    FullBandwidthUlMuMimo = 22,
    PartialBandwidthUlMuMimo = 23,
    DcmTwoStreamsTx = 26,
    DcmTwoStreamsRx = 29,
    RxPartialBwSuIn20MhzMuPpdu = 30,
    SuBeamformer = 31,
    SuBeamformee = 32,
    MuBeamformer = 33,
    Ng16SuFeedback = 46,
    Ng16MuFeedback = 47,
    Codebook42SuFeedback = 48,
    Codebook75MuFeedback = 49,
    TriggeredSuFeedback = 50,
    TriggeredMuPartialBwFeedback = 51,
    TriggeredCqiFeedback = 52,
    PartialBandwidthExtendedRange = 53,
    PartialBandwidthDlMuMimo = 54,
    PpeThresholdsPresent = 55,
    PsrBasedSpatialReuse = 56,
    PowerBoostFactor = 57,
    SuAndMuPpdu4xLtf800NsGi = 58,
    StbcTxOver80 = 62,
    StbcRxOver80 = 63,
    ErSuPpdu4xLtf800NsGi = 64,
    Width20In40At2Ghz = 65,
    Width20In160 = 66,
    Width80In160 = 67,
    ErSuPpdu1xLtf800NsGi = 68,
    Midamble2xAnd1xLtf = 69,
    LongerThan16SigBSymbols = 72,
    NonTriggeredCqiFeedback = 73,
    Tx1024QamSmallRu = 74,
    Rx1024QamSmallRu = 75,
    RxFullBwSuCompressedSigB = 76,
    RxFullBwSuNonCompressedSigB = 77,
    MuPpduMoreThanOneRuRxMaxLtf = 80,
};

// The constellation up to which dual carrier modulation is supported.
enum class DcmConstellation : std::uint8_t { None, Bpsk, Qpsk, Qam16 };

struct HePhyCapabilities {
    BitOctets<11> bits{};

    constexpr bool has(HePhyCapability flag) const {
        return bits.bit(static_cast<std::size_t>(flag));
    }
    // The seven bits of the Supported Channel Width Set. The flags tell each.
    constexpr int supportedChannelWidthSet() const { return field(1, 7); }
    // Bits: 0 and 1, at 80 MHz the secondary 20, or one of the two 20 of the secondary 40, may be
    // punctured; 2 and 3, the same in the primary 80 of 160 MHz.
    constexpr int puncturedPreambleRx() const { return field(8, 4); }
    // Space-time streams with a midamble: 1 to 4.
    constexpr int midambleStreams() const { return field(15, 2) + 1; }
    constexpr DcmConstellation dcmTx() const { return DcmConstellation(field(24, 2)); }
    constexpr DcmConstellation dcmRx() const { return DcmConstellation(field(27, 2)); }
    // Space-time streams of a sounding that a beamformee takes.
    constexpr int beamformeeStreams80() const { return field(34, 3) + 1; }
    constexpr int beamformeeStreamsOver80() const { return field(37, 3) + 1; }
    constexpr int soundingDimensions80() const { return field(40, 3) + 1; }
    constexpr int soundingDimensionsOver80() const { return field(43, 3) + 1; }
    // Columns of the feedback of a beamformee.
    constexpr int maximumColumns() const { return field(59, 3) + 1; }
    // Tones of the largest resource unit with dual carrier modulation: 242, 484, 996 or 1992.
    constexpr int dcmMaximumTones() const {
        constexpr std::array<int, 4> kTones = {242, 484, 996, 1992};
        return kTones[static_cast<std::size_t>(field(70, 2))];
    }
    // Microseconds: 0, 8 or 16. Absent for the reserved value; without meaning if there are PPE
    // thresholds.
    constexpr std::optional<int> nominalPacketPadding() const {
        if (field(78, 2) == 3) return std::nullopt;
        return 8 * field(78, 2);
    }

    friend constexpr bool operator==(const HePhyCapabilities&, const HePhyCapabilities&) = default;

  private:
    constexpr int field(std::size_t first, std::size_t count) const {
        return static_cast<int>(bits.bits(first, count));
    }
};

}  // namespace halvane::air

#endif
