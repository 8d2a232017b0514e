// HE Operation (IEEE 802.11ax-2021, 9.4.2.249): how a BSS of Wi-Fi 6 works, and its channel at 6
// GHz.
#ifndef HALVANE_AIR_HE_OPERATION_H
#define HALVANE_AIR_HE_OPERATION_H

#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/air/mcs_map.h"
#include "halvane/air/vht_operation.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"

namespace halvane::air {

// The channel of a BSS at 6 GHz. Centre frequencies are channel numbers of the band; 0 for none.
struct HALVANE_EXPORT SixGhzOperationInformation {
    enum class ChannelWidth : std::uint8_t {
        Mhz20 = 0,
        Mhz40 = 1,
        Mhz80 = 2,
        Mhz160Or80Plus80 = 3
    };

    std::uint8_t primaryChannel = 0;
    BitOctets<1> control{};
    std::uint8_t centerSegment0 = 0;
    std::uint8_t centerSegment1 = 0;
    std::uint8_t minimumRate = 0;  // for frames to the access point, in Mb/s

    constexpr ChannelWidth channelWidth() const {
        return static_cast<ChannelWidth>(control.bits(0, 2));
    }
    // Whether the beacon is sent in each 20 MHz of the channel.
    constexpr bool isDuplicateBeacon() const { return control.bit(2); }
    // 0: indoor, 1: standard power, 2: very low power, 3: indoor enabled, 4 and 8: indoor standard
    // power. The value has four bits since 802.11-2024.
    constexpr int regulatoryInfo() const { return static_cast<int>(control.bits(3, 4)); }

    friend bool operator==(const SixGhzOperationInformation&,
                           const SixGhzOperationInformation&) = default;
};

// Bits of the parameters tell which of the last three fields are there. encode() writes the fields
// that are there, so whoever adds or removes one does it by its setter.
struct HALVANE_EXPORT HeOperation {
    static constexpr ElementId kId = ElementId::HeOperation;

    BitOctets<3> parameters{};
    BitOctets<1> bssColorInformation{};
    HeMcsMap basicMcs{};  // that every station of the BSS supports
    std::optional<VhtOperationInformation> vht{};
    std::optional<std::uint8_t> maxCoHostedBssidIndicator{};  // as in Multiple BSSID
    std::optional<SixGhzOperationInformation> sixGhz{};
    ByteBuffer rest{};

    // In microseconds, 0 to 16; the values 5 to 7 of the field are reserved.
    constexpr int defaultPeDuration() const { return 4 * static_cast<int>(parameters.bits(0, 3)); }
    constexpr bool isTwtRequired() const { return parameters.bit(3); }
    // A transmission that is at least so long, in microseconds, begins with RTS. Absent if no
    // threshold is set.
    constexpr std::optional<int> txopDurationRtsThreshold() const {
        const auto value = static_cast<int>(parameters.bits(4, 10));
        return value == 1023 ? std::nullopt : std::optional<int>(32 * value);
    }
    constexpr bool isCoHosted() const { return parameters.bit(15); }
    constexpr bool isErSuDisabled() const { return parameters.bit(16); }
    // 1 to 63, or 0 for none.
    constexpr int bssColor() const { return static_cast<int>(bssColorInformation.bits(0, 6)); }
    constexpr bool isPartialBssColor() const { return bssColorInformation.bit(6); }
    constexpr bool isBssColorDisabled() const { return bssColorInformation.bit(7); }

    void setVht(const std::optional<VhtOperationInformation>& value) {
        vht = value;
        parameters.setBit(14, value.has_value());
    }
    void setMaxCoHostedBssidIndicator(std::optional<std::uint8_t> value) {
        maxCoHostedBssidIndicator = value;
        parameters.setBit(15, value.has_value());
    }
    void setSixGhz(const std::optional<SixGhzOperationInformation>& value) {
        sixGhz = value;
        parameters.setBit(17, value.has_value());
    }

    static std::optional<HeOperation> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const HeOperation&, const HeOperation&) = default;
};

}  // namespace halvane::air

#endif
