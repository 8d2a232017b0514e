// Neighbor Report (IEEE 802.11-2020, 9.4.2.36): one access point near by, to which a station may
// move.
#ifndef HALVANE_AIR_NEIGHBOR_REPORT_H
#define HALVANE_AIR_NEIGHBOR_REPORT_H

#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/element_damage.h"
#include "halvane/air/element_id.h"
#include "halvane/air/field_sink.h"
#include "halvane/air/subelement.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"
#include "halvane/base/mac_address.h"

namespace halvane::air {

// Whether a station can preauthenticate with the neighbour.
enum class ApReachability : std::uint8_t {
    Reserved = 0,
    NotReachable = 1,
    Unknown = 2,
    Reachable = 3
};

// BSSID Information.
struct NeighborBssidInformation {
    BitOctets<4> fields{};

    // For preauthentication.
    constexpr ApReachability reachability() const {
        return static_cast<ApReachability>(fields.bits(0, 2));
    }
    constexpr bool hasSameSecurity() const { return fields.bit(2); }
    constexpr bool hasSameAuthenticator() const { return fields.bit(3); }
    constexpr bool hasSpectrumManagement() const { return fields.bit(4); }
    constexpr bool hasQos() const { return fields.bit(5); }
    constexpr bool hasApsd() const { return fields.bit(6); }
    constexpr bool hasRadioMeasurement() const { return fields.bit(7); }
    constexpr bool isInMobilityDomain() const { return fields.bit(10); }
    constexpr bool isHighThroughput() const { return fields.bit(11); }
    constexpr bool isVeryHighThroughput() const { return fields.bit(12); }
    constexpr bool hasFtm() const { return fields.bit(13); }
    constexpr bool isHighEfficiency() const { return fields.bit(14); }
    constexpr bool isErBss() const { return fields.bit(15); }
    constexpr bool isCoLocated() const { return fields.bit(16); }
    constexpr bool sendsUnsolicitedProbeResponses() const { return fields.bit(17); }
    constexpr bool isInEssWithCoLocatedAp() const { return fields.bit(18); }
    constexpr bool hasOctWithSender() const { return fields.bit(19); }
    constexpr bool isCoLocatedWith6GhzAp() const { return fields.bit(20); }
    constexpr bool isExtremelyHighThroughput() const { return fields.bit(21); }

    friend constexpr bool operator==(const NeighborBssidInformation&,
                                     const NeighborBssidInformation&) = default;
};

// The optional subelement with the neighbour's time (9.4.2.36).
struct NeighborTsf {
    // TU between the sender's TSF and the neighbor's, to the nearest one, modulo beaconInterval.
    std::uint16_t offset = 0;
    std::uint16_t beaconInterval = 0;  // TU

    friend constexpr bool operator==(const NeighborTsf&, const NeighborTsf&) = default;
};

// Octets after the last whole subelement are `rest`.
struct HALVANE_EXPORT NeighborReport {
    static constexpr ElementId kId = ElementId::NeighborReport;

    MacAddress bssid{};
    NeighborBssidInformation information{};
    std::uint8_t operatingClass = 0;  // of Annex E
    std::uint8_t channel = 0;         // the primary channel
    std::uint8_t phyType = 0;         // dot11PHYType: 7 is HT, 9 VHT, 14 HE, 15 EHT
    std::vector<Subelement> subelements{};
    ByteBuffer rest{};

    // How much the sender wants stations to move there, 255 the most; 0: not at all. Absent if it
    // does not tell.
    std::optional<std::uint8_t> preference() const;
    // When the neighbor's beacons come; absent if the sender does not tell.
    std::optional<NeighborTsf> tsf() const;
    // The first subelement of the number, such as 45 for HT Capabilities; null if there is none.
    const Subelement* find(std::uint8_t id) const;

    static std::optional<NeighborReport> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const NeighborReport&, const NeighborReport&) = default;
};

}  // namespace halvane::air

#endif
