// EHT Operation (IEEE 802.11be-2024, 9.4.2.311): the channel of a BSS of Wi-Fi 7, and the parts of
// it that are not used.
#ifndef HALVANE_AIR_EHT_OPERATION_H
#define HALVANE_AIR_EHT_OPERATION_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/eht_mcs_sets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"

namespace halvane::air {

// Centre frequencies are channel numbers of the band; 0 for none.
struct HALVANE_EXPORT EhtOperationInformation {
    enum class ChannelWidth : std::uint8_t {
        Mhz20 = 0,
        Mhz40 = 1,
        Mhz80 = 2,
        Mhz160 = 3,
        Mhz320 = 4,
        Reserved = 5,
    };

    BitOctets<1> control{};
    std::uint8_t centerSegment0 = 0;  // of the channel up to 80 MHz, else of the primary half
    std::uint8_t centerSegment1 = 0;  // of the channel from 160 MHz on
    std::optional<BitOctets<2>> disabledSubchannels{};

    constexpr ChannelWidth channelWidth() const {
        const auto width = control.bits(0, 3);
        return width <= 4 ? static_cast<ChannelWidth>(width) : ChannelWidth::Reserved;
    }
    // Whether the 20 MHz that `index` counts from the lowest, 0 to 15, are punctured.
    constexpr bool isDisabled(std::size_t index) const {
        return disabledSubchannels && disabledSubchannels->bit(index);
    }

    friend bool operator==(const EhtOperationInformation&,
                           const EhtOperationInformation&) = default;
};

// Bits of the parameters tell whether the information and its bitmap are there. encode() writes the
// fields that are there, so whoever adds or removes one does it by setInformation().
struct HALVANE_EXPORT EhtOperation {
    static constexpr ElementId kId = ElementId::EhtOperation;

    BitOctets<1> parameters{};
    EhtMcsMap<4> basicMcs{};                               // that every station of the BSS supports
    std::optional<EhtOperationInformation> information{};  // absent: HE or VHT decide
    ByteBuffer rest{};

    // Whether the packet extension is 20 us. Otherwise HE Operation tells its length.
    constexpr bool isDefaultPeDuration20() const { return parameters.bit(2); }
    // Whether the number of group addressed frames that TIM tells of other links is limited.
    constexpr bool isGroupAddressedBuIndicationLimited() const { return parameters.bit(3); }
    constexpr int groupAddressedBuIndicationExponent() const {
        return static_cast<int>(parameters.bits(4, 2));
    }
    constexpr bool isMcs15Disabled() const { return parameters.bit(6); }

    void setInformation(const std::optional<EhtOperationInformation>& value) {
        information = value;
        parameters.setBit(0, value.has_value());
        parameters.setBit(1, value && value->disabledSubchannels);
    }

    static std::optional<EhtOperation> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const EhtOperation&, const EhtOperation&) = default;
};

}  // namespace halvane::air

#endif
