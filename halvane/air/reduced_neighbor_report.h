// Reduced Neighbor Report (IEEE 802.11-2020, 9.4.2.170, with 802.11ax and 802.11be): access points
// near by, those of the sender's MLD included.
#ifndef HALVANE_AIR_REDUCED_NEIGHBOR_REPORT_H
#define HALVANE_AIR_REDUCED_NEIGHBOR_REPORT_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/mac_address.h"

namespace halvane::air {

// What an access point is to the sender.
struct TbttBssParameters {
    BitOctets<1> fields{};

    constexpr bool isOctRecommended() const { return fields.bit(0); }
    constexpr bool hasSameSsid() const { return fields.bit(1); }
    constexpr bool isInMultipleBssidSet() const { return fields.bit(2); }
    constexpr bool isTransmittedBssid() const { return fields.bit(3); }
    // Whether each 6 GHz access point of its ESS stands beside one at 2.4 or 5 GHz.
    constexpr bool isInEssWithCoLocatedAp() const { return fields.bit(4); }
    constexpr bool sendsUnsolicitedProbeResponses() const { return fields.bit(5); }
    constexpr bool isCoLocated() const { return fields.bit(6); }

    friend constexpr bool operator==(const TbttBssParameters&, const TbttBssParameters&) = default;
};

// Which link of which MLD an access point is.
struct TbttMldParameters {
    BitOctets<3> fields{};

    // 0 is the MLD of the sender. Absent if the MLD is unknown.
    constexpr std::optional<std::uint8_t> apMldId() const { return known(0, 8, 255); }
    constexpr std::optional<std::uint8_t> linkId() const { return known(8, 4, 15); }
    constexpr std::optional<std::uint8_t> bssParametersChangeCount() const {
        return known(12, 8, 255);
    }
    // Whether the frame tells all updates of the access point.
    constexpr bool areAllUpdatesIncluded() const { return fields.bit(20); }
    constexpr bool isLinkDisabled() const { return fields.bit(21); }

    friend constexpr bool operator==(const TbttMldParameters&, const TbttMldParameters&) = default;

  private:
    constexpr std::optional<std::uint8_t> known(std::size_t first, std::size_t count,
                                                std::uint32_t unknown) const {
        const std::uint32_t field = fields.bits(first, count);
        if (field == unknown) return std::nullopt;
        return static_cast<std::uint8_t>(field);
    }
};

// One access point. The type and the length of its channel's header decide which fields it has.
struct HALVANE_EXPORT TbttInformation {
    // TU from the sender's beacon to the next of this one; 254: 254 or more; 255: unknown.
    std::optional<std::uint8_t> tbttOffset{};
    std::optional<MacAddress> bssid{};
    std::optional<std::uint32_t> shortSsid{};  // shortSsidOf() its name
    std::optional<TbttBssParameters> bssParameters{};
    std::optional<std::int8_t> psd{};  // 0.5 dBm/MHz; 127: no limit
    std::optional<TbttMldParameters> mldParameters{};
    ByteBuffer rest{};  // everything, if the type or the length is reserved

    // The highest power density that is allowed in 20 MHz, in dBm/MHz; absent for no limit.
    std::optional<double> maxPsd() const {
        if (!psd || *psd == 127) return std::nullopt;
        return *psd / 2.0;
    }

    friend bool operator==(const TbttInformation&, const TbttInformation&) = default;
};

// The access points on one channel. encode() sets the header's count and length to what they are.
// It returns nothing for more than 16 access points, and for points that differ in their fields.
struct HALVANE_EXPORT NeighborApInformation {
    BitOctets<2> header{};
    std::uint8_t operatingClass = 0;
    std::uint8_t channel = 0;                     // the primary channel
    std::vector<TbttInformation> accessPoints{};  // none if the header tells a length of 0

    // 0: whole, 1: MLD parameters alone; 2 and 3 are reserved.
    std::uint8_t type() const { return static_cast<std::uint8_t>(header.bits(0, 2)); }
    // Whether the list holds access points of the wanted SSID alone.
    bool isFiltered() const { return header.bit(2); }
    std::size_t length() const { return header.bits(8, 8); }

    friend bool operator==(const NeighborApInformation&, const NeighborApInformation&) = default;
};

// Octets from a channel on that does not fit are `rest`.
struct HALVANE_EXPORT ReducedNeighborReport {
    static constexpr ElementId kId = ElementId::ReducedNeighborReport;

    std::vector<NeighborApInformation> neighbors{};
    ByteBuffer rest{};

    static std::optional<ReducedNeighborReport> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const ReducedNeighborReport&, const ReducedNeighborReport&) = default;
};

}  // namespace halvane::air

#endif
