// Extended Capabilities (IEEE 802.11-2020, 9.4.2.26): features of a station beyond the Capability
// Information field.
#ifndef HALVANE_AIR_EXTENDED_CAPABILITIES_H
#define HALVANE_AIR_EXTENDED_CAPABILITIES_H

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

// The flags, by bit. 77 to 80, 83 and 89 are of 802.11ax, 88 is of the Wi-Fi Alliance's WPA3, 90 to
// 97 are of 802.11az.
enum class ExtendedCapability : std::uint8_t {
    Coexistence2040 = 0,
    GeneralLink = 1,
    ExtendedChannelSwitching = 2,
    GlkGcr = 3,
    Psmp = 4,
    SPsmp = 6,
    Event = 7,
    Diagnostics = 8,
    MulticastDiagnostics = 9,
    LocationTracking = 10,
    Fms = 11,
    ProxyArp = 12,
    CollocatedInterferenceReporting = 13,
    CivicLocation = 14,
    GeospatialLocation = 15,
    Tfs = 16,
    WnmSleepMode = 17,
    TimBroadcast = 18,
    BssTransition = 19,
    QosTraffic = 20,
    AcStationCount = 21,
    MultipleBssid = 22,
    TimingMeasurement = 23,
    ChannelUsage = 24,
    SsidList = 25,
    Dms = 26,
    UtcTsfOffset = 27,
    TpuBufferSta = 28,
    TdlsPeerPsm = 29,
    TdlsChannelSwitching = 30,
    Interworking = 31,
    QosMap = 32,
    Ebr = 33,
    SspnInterface = 34,
    Msgcf = 36,
    Tdls = 37,
    TdlsProhibited = 38,
    TdlsChannelSwitchingProhibited = 39,
    RejectUnadmittedFrame = 40,
    IdentifierLocation = 44,
    UapsdCoexistence = 45,
    WnmNotification = 46,
    Qab = 47,
    Utf8Ssid = 48,
    QmfActivated = 49,
    QmfReconfigurationActivated = 50,
    RobustAvStreaming = 51,
    AdvancedGcr = 52,
    MeshGcr = 53,
    Scs = 54,
    QloadReport = 55,
    AlternateEdca = 56,
    UnprotectedTxopNegotiation = 57,
    ProtectedTxopNegotiation = 58,
    ProtectedQloadReport = 60,
    TdlsWiderBandwidth = 61,
    OperatingModeNotification = 62,
    ChannelScheduleManagement = 65,
    GeodatabaseInbandEnablingSignal = 66,
    NetworkChannelControl = 67,
    WhiteSpaceMap = 68,
    ChannelAvailabilityQuery = 69,
    FtmResponder = 70,
    FtmInitiator = 71,
    Fils = 72,
    ExtendedSpectrumManagement = 73,
    FutureChannelGuidance = 74,
    Pad = 75,
    TwtRequester = 77,
    TwtResponder = 78,
    ObssNarrowBandwidthRuTolerance = 79,
    CompleteNonTxBssidProfiles = 80,
    SaePasswordIdentifiers = 81,
    SaePasswordIdentifiersExclusively = 82,
    EnhancedMultiBssid = 83,
    BeaconProtection = 84,
    MirroredScs = 85,
    Oct = 86,
    LocalMacAddressPolicy = 87,
    SaePkExclusively = 88,
    TwtParametersRange = 89,
    NonTbRangingResponder = 90,
    TbRangingResponder = 91,
    PassiveTbRangingResponderMeasurement = 92,
    PassiveTbRangingInitiatorMeasurement = 93,
    AoaMeasurement = 94,
    PhaseShiftFeedback = 95,
    LocationSupportingAps = 96,
    I2rLmrFeedback = 97,
};

struct HALVANE_EXPORT ExtendedCapabilities {
    static constexpr ElementId kId = ElementId::ExtendedCapabilities;

    ByteBuffer octets{};  // the bits past the last octet are not set

    bool has(ExtendedCapability flag) const {
        return field(static_cast<std::size_t>(flag), 1) != 0;
    }
    // Sets the flag, and adds octets for it if they are missing.
    void setCapability(ExtendedCapability flag);
    // Milliseconds of the shortest service interval, 5 to 40; for stations with S-PSMP.
    int serviceIntervalGranularity() const { return 5 * (static_cast<int>(field(41, 3)) + 1); }
    // The most MSDUs in an A-MSDU: 32, 16 or 8; absent for no limit.
    std::optional<int> maximumMsdusInAmsdu() const {
        if (field(63, 2) == 0) return std::nullopt;
        return 64 >> field(63, 2);
    }

    static std::optional<ExtendedCapabilities> decode(Octets body);
    static std::optional<ElementDamage> describe(Octets body, FieldSink& sink);
    std::vector<std::uint8_t> encode() const;

    friend bool operator==(const ExtendedCapabilities&, const ExtendedCapabilities&) = default;

  private:
    std::uint32_t field(std::size_t first, std::size_t count) const {
        return bitsOf(octets.bytes(), first, count);
    }
};

}  // namespace halvane::air

#endif
