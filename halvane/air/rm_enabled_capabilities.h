// RM Enabled Capabilities (IEEE 802.11-2020, 9.4.2.44): which radio measurements a station makes.
#ifndef HALVANE_AIR_RM_ENABLED_CAPABILITIES_H
#define HALVANE_AIR_RM_ENABLED_CAPABILITIES_H

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

namespace halvane::air {

// The flags, by bit.
enum class RmCapability : std::uint8_t {
    LinkMeasurement = 0,
    NeighborReport = 1,
    ParallelMeasurements = 2,
    RepeatedMeasurements = 3,
    BeaconPassive = 4,
    BeaconActive = 5,
    BeaconTable = 6,
    BeaconReportingConditions = 7,
    Frame = 8,
    ChannelLoad = 9,
    NoiseHistogram = 10,
    Statistics = 11,
    Lci = 12,
    LciAzimuth = 13,
    TransmitStream = 14,
    TriggeredTransmitStream = 15,
    ApChannelReport = 16,
    RmMib = 17,
    MeasurementPilotTransmission = 27,
    NeighborReportTsfOffset = 28,
    Rcpi = 29,
    Rsni = 30,
    BssAverageAccessDelay = 31,
    BssAvailableAdmissionCapacity = 32,
    Antenna = 33,
    FtmRangeReport = 34,
    CivicLocation = 35,
};

struct HALVANE_EXPORT RmEnabledCapabilities {
    static constexpr ElementId kId = ElementId::RmEnabledCapabilities;

    BitOctets<5> bits{};
    ByteBuffer rest{};

    bool has(RmCapability flag) const { return bits.bit(static_cast<std::size_t>(flag)); }
    // The longest measurement, as 2^(n-4) beacon intervals (9.4.2.44); 0: no limit is stated.
    int operatingChannelDuration() const { return field(18); }
    int nonoperatingChannelDuration() const { return field(21); }
    // 0: no measurement pilots; otherwise how they are scheduled (table 9-179).
    int measurementPilotCapability() const { return field(24); }

    static std::optional<RmEnabledCapabilities> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const RmEnabledCapabilities&, const RmEnabledCapabilities&) = default;

  private:
    int field(std::size_t first) const { return static_cast<int>(bits.bits(first, 3)); }
};

}  // namespace halvane::air

#endif
