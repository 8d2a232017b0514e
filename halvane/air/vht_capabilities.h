// VHT Capabilities (IEEE 802.11-2020, 9.4.2.157): what a station can do at 5 GHz since Wi-Fi 5.
#ifndef HALVANE_AIR_VHT_CAPABILITIES_H
#define HALVANE_AIR_VHT_CAPABILITIES_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/air/mcs_map.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"

namespace halvane::air {

// The flags of the VHT Capabilities Information field, by bit.
enum class VhtCapability : std::uint8_t {
    RxLdpc = 4,
    ShortGi80 = 5,
    ShortGi160 = 6,  // also at 80+80 MHz
    TxStbc = 7,
    SuBeamformer = 11,
    SuBeamformee = 12,
    MuBeamformer = 19,
    MuBeamformee = 20,
    TxopPs = 21,
    HtcVht = 22,
    RxAntennaPatternConsistency = 28,
    TxAntennaPatternConsistency = 29,
};

struct HALVANE_EXPORT VhtCapabilities {
    static constexpr ElementId kId = ElementId::VhtCapabilities;

    BitOctets<4> information{};
    // Of the maps at up to 80 MHz; at 160 and 80+80 MHz, streamsAt160() and streamsAt80Plus80().
    VhtMcsMap rxMcs{};
    BitOctets<2> rxRates{};
    VhtMcsMap txMcs{};
    BitOctets<2> txRates{};
    ByteBuffer rest{};

    bool has(VhtCapability flag) const { return information.bit(static_cast<std::size_t>(flag)); }
    // Octets: 3895, 7991 or 11454; absent for the reserved value.
    std::optional<int> maximumMpduLength() const;
    // 0: up to 80 MHz; 1: 160 MHz too; 2: 80+80 MHz too. Together with extendedNssBw() it decides
    // on the streams.
    int supportedChannelWidthSet() const { return field(2, 2); }
    int rxStbcStreams() const { return field(8, 3); }
    int beamformeeStreams() const { return field(13, 3) + 1; }   // of a beamformee
    int soundingDimensions() const { return field(16, 3) + 1; }  // of a beamformer
    // Octets: 8191 to 1048575.
    int maximumAmpduLength() const { return (1 << (13 + field(23, 3))) - 1; }
    // 0: no VHT link adaptation; 2: unsolicited feedback; 3: also in reply to a request.
    int linkAdaptation() const { return field(26, 2); }
    int extendedNssBw() const { return field(30, 2); }

    // The streams that the station handles at these widths if `streams` is what a map gives, by
    // table 9-272: 0 if it does not handle the width.
    int streamsAt160(int streams) const;
    int streamsAt80Plus80(int streams) const;
    // At up to 80 MHz, where some radios handle twice the streams of the maps.
    int streamsAt80(int streams) const;

    // Mbit/s; 0: not stated.
    int highestRxRate() const { return static_cast<int>(rxRates.bits(0, 13)); }
    int highestTxRate() const { return static_cast<int>(txRates.bits(0, 13)); }
    // Space-time streams of all users together; 0: not stated.
    int maximumTotalStreams() const { return static_cast<int>(rxRates.bits(13, 3)); }
    // Whether the station heeds extendedNssBw() of others.
    bool isExtendedNssBwCapable() const { return txRates.bit(13); }

    static std::optional<VhtCapabilities> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const VhtCapabilities&, const VhtCapabilities&) = default;

  private:
    int field(std::size_t first, std::size_t count) const {
        return static_cast<int>(information.bits(first, count));
    }
};

}  // namespace halvane::air

#endif
