// HT Operation (IEEE 802.11-2020, 9.4.2.56): the channel of a BSS of Wi-Fi 4, and how it protects
// its frames.
#ifndef HALVANE_AIR_HT_OPERATION_H
#define HALVANE_AIR_HT_OPERATION_H

#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/air/ht_mcs_set.h"
#include "halvane/air/secondary_channel_offset.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"

namespace halvane::air {

struct HALVANE_EXPORT HtOperation {
    static constexpr ElementId kId = ElementId::HtOperation;

    // Which stations of other kinds the frames of the BSS are protected from (10.27.3.1).
    enum class Protection : std::uint8_t { None = 0, Nonmember = 1, Mhz20 = 2, NonHtMixed = 3 };

    std::uint8_t primaryChannel = 0;  // channel number
    BitOctets<5> information{};
    HtMcsSet basicMcs{};  // that every station of the BSS supports
    ByteBuffer rest{};

    constexpr SecondaryChannel secondaryChannel() const {
        return static_cast<SecondaryChannel>(information.bits(0, 2));
    }
    // Whether stations may send at every width that they support. Otherwise they send 20 MHz.
    constexpr bool isAnyWidthAllowed() const { return information.bit(2); }
    constexpr bool isRifsPermitted() const { return information.bit(3); }
    constexpr Protection protection() const {
        return static_cast<Protection>(information.bits(8, 2));
    }
    constexpr bool hasNongreenfieldStations() const { return information.bit(10); }
    constexpr bool hasObssNonHtStations() const { return information.bit(12); }
    // Takes the place of the segment 1 of VHT Operation, for stations that support fewer streams at
    // the widest channel. A channel number; absent for 0.
    constexpr std::optional<std::uint8_t> centerSegment2() const {
        const auto channel = static_cast<std::uint8_t>(information.bits(13, 8));
        return channel == 0 ? std::nullopt : std::optional<std::uint8_t>(channel);
    }
    constexpr bool hasDualBeacon() const { return information.bit(30); }
    constexpr bool isDualCtsProtectionRequired() const { return information.bit(31); }
    constexpr bool isStbcBeacon() const { return information.bit(32); }

    static std::optional<HtOperation> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const HtOperation&, const HtOperation&) = default;
};

}  // namespace halvane::air

#endif
