// HE MAC Capabilities Information (802.11ax-2021, 9.4.2.248.2), of the HE Capabilities element.
//
// A plain value. Threads: as for an integer.
#ifndef HALVANE_AIR_HE_MAC_CAPABILITIES_H
#define HALVANE_AIR_HE_MAC_CAPABILITIES_H

#include <cstddef>
#include <cstdint>
#include <optional>

#include "halvane/air/bit_octets.h"

namespace halvane::air {

// The flags, by bit.
enum class HeMacCapability : std::uint8_t {
    HtcHe = 0,
    TwtRequester = 1,
    TwtResponder = 2,
    AllAck = 17,
    Trs = 18,
    Bsr = 19,
    BroadcastTwt = 20,
    BaBitmap32 = 21,
    MuCascading = 22,
    AckEnabledAggregation = 23,
    OmControl = 25,
    OfdmaRandomAccess = 26,
    AmsduFragmentation = 29,
    FlexibleTwtSchedule = 30,
    RxControlFrameToMultiBss = 31,
    BsrpBqrpAmpduAggregation = 32,
    Qtp = 33,
    Bqr = 34,
    PsrResponder = 35,
    NdpFeedbackReport = 36,
    Ops = 37,
    AmsduNotUnderBaInAckEnabledAmpdu = 38,
    SubchannelSelectiveTransmission = 42,
    Ul2x996ToneRu = 43,
    OmControlUlMuDataDisableRx = 44,
    DynamicSmPowerSave = 45,
    PuncturedSounding = 46,
    HtAndVhtTriggerFrameRx = 47,
};

struct HeMacCapabilities {
    BitOctets<6> bits{};

    constexpr bool has(HeMacCapability flag) const {
        return bits.bit(static_cast<std::size_t>(flag));
    }
    // Level 0 (none) to 3 of dynamic fragmentation.
    constexpr int dynamicFragmentation() const { return field(3, 2); }
    // How many fragmented MSDUs the station takes; absent for no limit.
    constexpr std::optional<int> maximumFragmentedMsdus() const {
        if (field(5, 3) == 7) return std::nullopt;
        return 1 << field(5, 3);
    }
    // Octets of the first fragment at least: 0 (no limit), 128, 256 or 512.
    constexpr int minimumFragmentSize() const { return field(8, 2) == 0 ? 0 : 64 << field(8, 2); }
    // Microseconds after a Trigger frame: 0, 8 or 16; 24 for the reserved value.
    constexpr int triggerFramePadding() const { return 8 * field(10, 2); }
    // Traffic identifiers that one A-MPDU may hold.
    constexpr int multiTidAggregationRx() const { return field(12, 3) + 1; }
    constexpr int multiTidAggregationTx() const { return field(39, 3) + 1; }
    // 0: none; 2: unsolicited feedback; 3: also in reply to a request.
    constexpr int linkAdaptation() const { return field(15, 2); }
    // Is added to the exponent of the VHT Capabilities, of the HE 6 GHz Band Capabilities, or at
    // 2.4 GHz of the HT Capabilities.
    constexpr int maximumAmpduLengthExponentExtension() const { return field(27, 2); }

    friend constexpr bool operator==(const HeMacCapabilities&, const HeMacCapabilities&) = default;

  private:
    constexpr int field(std::size_t first, std::size_t count) const {
        return static_cast<int>(bits.bits(first, count));
    }
};

}  // namespace halvane::air

#endif
