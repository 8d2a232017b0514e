// HT Capabilities (IEEE 802.11-2020, 9.4.2.55): what a station of Wi-Fi 4 can do.
#ifndef HALVANE_AIR_HT_CAPABILITIES_H
#define HALVANE_AIR_HT_CAPABILITIES_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/air/ht_mcs_set.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"

namespace halvane::air {

// HT Capability Information (9.4.2.55.2).
struct HtCapabilityInformation {
    enum class SmPowerSave : std::uint8_t { Static = 0, Dynamic = 1, Reserved = 2, Disabled = 3 };

    BitOctets<2> fields{{0x0C, 0x00}};  // without SM power save

    constexpr bool isLdpcSupported() const { return fields.bit(0); }
    constexpr bool is40MhzSupported() const { return fields.bit(1); }
    constexpr SmPowerSave smPowerSave() const {
        return static_cast<SmPowerSave>(fields.bits(2, 2));
    }
    constexpr bool isGreenfieldSupported() const { return fields.bit(4); }
    constexpr bool isShortGuardInterval20Supported() const { return fields.bit(5); }
    constexpr bool isShortGuardInterval40Supported() const { return fields.bit(6); }
    constexpr bool isTxStbcSupported() const { return fields.bit(7); }
    constexpr int rxStbcStreams() const { return static_cast<int>(fields.bits(8, 2)); }  // 0: none
    constexpr bool isDelayedBlockAckSupported() const { return fields.bit(10); }
    constexpr int maxAmsduLength() const { return fields.bit(11) ? 7935 : 3839; }  // octets
    constexpr bool isDsssCckAllowedAt40Mhz() const { return fields.bit(12); }
    constexpr bool is40MhzIntolerant() const { return fields.bit(14); }
    constexpr bool isLSigTxopProtectionSupported() const { return fields.bit(15); }

    friend constexpr bool operator==(const HtCapabilityInformation&,
                                     const HtCapabilityInformation&) = default;
};

// A-MPDU Parameters (9.4.2.55.3).
struct AmpduParameters {
    BitOctets<1> fields{};

    constexpr int maxLength() const { return (1 << (13 + fields.bits(0, 2))) - 1; }  // octets
    // Between the starts of two MPDUs, in 1/8 microseconds; 0 for no restriction.
    constexpr int minStartSpacing() const {
        const auto value = fields.bits(2, 3);
        return value == 0 ? 0 : 1 << value;
    }

    friend constexpr bool operator==(const AmpduParameters&, const AmpduParameters&) = default;
};

// HT Extended Capabilities (9.4.2.55.5).
struct HtExtendedCapabilities {
    enum class McsFeedback : std::uint8_t { None = 0, Reserved = 1, Unsolicited = 2, Both = 3 };

    BitOctets<2> fields{};

    constexpr McsFeedback mcsFeedback() const {
        return static_cast<McsFeedback>(fields.bits(8, 2));
    }
    constexpr bool isHtcSupported() const { return fields.bit(10); }  // the HT Control field
    constexpr bool isReverseDirectionResponder() const { return fields.bit(11); }

    friend constexpr bool operator==(const HtExtendedCapabilities&,
                                     const HtExtendedCapabilities&) = default;
};

// Transmit Beamforming Capabilities (9.4.2.55.6).
struct TransmitBeamformingCapabilities {
    // How a station replies to a request for feedback.
    enum class Feedback : std::uint8_t { None = 0, Delayed = 1, Immediate = 2, Both = 3 };

    BitOctets<4> fields{};

    constexpr bool isImplicitReceiver() const { return fields.bit(0); }
    constexpr bool receivesStaggeredSounding() const { return fields.bit(1); }
    constexpr bool sendsStaggeredSounding() const { return fields.bit(2); }
    constexpr bool receivesNdp() const { return fields.bit(3); }
    constexpr bool sendsNdp() const { return fields.bit(4); }
    constexpr bool isImplicitBeamformer() const { return fields.bit(5); }
    constexpr bool isExplicitCsiBeamformer() const { return fields.bit(8); }
    constexpr bool isNoncompressedBeamformer() const { return fields.bit(9); }
    constexpr bool isCompressedBeamformer() const { return fields.bit(10); }
    constexpr Feedback csiFeedback() const { return feedbackAt(11); }
    constexpr Feedback noncompressedFeedback() const { return feedbackAt(13); }
    constexpr Feedback compressedFeedback() const { return feedbackAt(15); }
    // Antennas of a beamformer, 1 to 4.
    constexpr int csiAntennas() const { return countAt(19); }
    constexpr int noncompressedAntennas() const { return countAt(21); }
    constexpr int compressedAntennas() const { return countAt(23); }
    constexpr int csiRows() const { return countAt(25); }            // 1 to 4
    constexpr int channelEstimation() const { return countAt(27); }  // space-time streams, 1 to 4

    friend constexpr bool operator==(const TransmitBeamformingCapabilities&,
                                     const TransmitBeamformingCapabilities&) = default;

  private:
    constexpr Feedback feedbackAt(std::size_t bit) const {
        return static_cast<Feedback>(fields.bits(bit, 2));
    }
    constexpr int countAt(std::size_t bit) const {
        return static_cast<int>(fields.bits(bit, 2)) + 1;
    }
};

// ASEL Capability (9.4.2.55.7): antenna selection.
struct AntennaSelectionCapability {
    BitOctets<1> fields{};

    constexpr bool isSupported() const { return fields.bit(0); }
    constexpr bool usesExplicitCsiFeedback() const { return fields.bit(1); }
    constexpr bool usesAntennaIndicesFeedback() const { return fields.bit(2); }
    constexpr bool sendsExplicitCsiFeedback() const { return fields.bit(3); }
    constexpr bool sendsAntennaIndicesFeedback() const { return fields.bit(4); }
    constexpr bool selectsForReception() const { return fields.bit(5); }
    constexpr bool sendsSoundingPpdus() const { return fields.bit(6); }

    friend constexpr bool operator==(const AntennaSelectionCapability&,
                                     const AntennaSelectionCapability&) = default;
};

struct HALVANE_EXPORT HtCapabilities {
    static constexpr ElementId kId = ElementId::HtCapabilities;

    HtCapabilityInformation information{};
    AmpduParameters ampdu{};
    HtMcsSet rxMcs{};
    HtExtendedCapabilities extended{};
    TransmitBeamformingCapabilities beamforming{};
    AntennaSelectionCapability antennaSelection{};
    ByteBuffer rest{};

    static std::optional<HtCapabilities> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const HtCapabilities&, const HtCapabilities&) = default;
};

}  // namespace halvane::air

#endif
