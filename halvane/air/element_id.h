// The number of an element: its element ID and, for the ID 255, its element ID extension (IEEE
// 802.11-2020, table 9-92).
#ifndef HALVANE_AIR_ELEMENT_ID_H
#define HALVANE_AIR_ELEMENT_ID_H

#include <cstdint>
#include <optional>

#include "halvane/base/cxx20.h"

namespace halvane::air {

// The element ID, or 256 plus the element ID extension. Every number of either kind is a value of
// this type; the enumerators are the elements that the library decodes. The value 255 is an element
// that has the ID 255 and lacks its extension.
enum class ElementId : std::uint16_t {
    Ssid = 0,
    SupportedRates = 1,
    DsParameterSet = 3,
    Tim = 5,
    Country = 7,
    BssLoad = 11,
    EdcaParameterSet = 12,
    PowerConstraint = 32,
    TpcReport = 35,
    ChannelSwitch = 37,
    Quiet = 40,
    Erp = 42,
    HtCapabilities = 45,
    Rsn = 48,
    ExtendedSupportedRates = 50,
    ApChannelReport = 51,
    NeighborReport = 52,
    MobilityDomain = 54,
    SupportedOperatingClasses = 59,
    ExtendedChannelSwitch = 60,
    HtOperation = 61,
    SecondaryChannelOffset = 62,
    BssAcAccessDelay = 68,
    TimeAdvertisement = 69,
    RmEnabledCapabilities = 70,
    MultipleBssid = 71,
    NontransmittedBssidCapability = 83,
    MultipleBssidIndex = 85,
    BssMaxIdlePeriod = 90,
    ChannelUsage = 97,
    Interworking = 107,
    AdvertisementProtocol = 108,
    RoamingConsortium = 111,
    MeshConfiguration = 113,
    MeshId = 114,
    ExtendedCapabilities = 127,
    CcxDeviceName = 133,  // reserved by the standard, used by a maker
    VhtCapabilities = 191,
    VhtOperation = 192,
    ExtendedBssLoad = 193,
    WideBandwidthChannelSwitch = 194,
    TransmitPowerEnvelope = 195,
    ChannelSwitchWrapper = 196,
    QuietChannel = 198,
    OperatingModeNotification = 199,
    ReducedNeighborReport = 201,
    Twt = 216,
    Vendor = 221,
    FilsIndication = 240,
    Fragment = 242,
    Rsnx = 244,
    ExtensionMissing = 255,
    EstimatedServiceParametersInbound = 256 + 11,
    HeCapabilities = 256 + 35,
    HeOperation = 256 + 36,
    UoraParameterSet = 256 + 37,
    MuEdcaParameterSet = 256 + 38,
    SpatialReuse = 256 + 39,
    BssColorChange = 256 + 42,
    MaxChannelSwitchTime = 256 + 52,
    OperatingChannelInformation = 256 + 54,
    MultipleBssidConfiguration = 256 + 55,
    NonInheritance = 256 + 56,
    ShortSsidList = 256 + 58,
    He6GhzBandCapabilities = 256 + 59,
    EhtOperation = 256 + 106,
    MultiLink = 256 + 107,
    EhtCapabilities = 256 + 108,
    TidToLinkMapping = 256 + 109,
    MultiLinkTraffic = 256 + 110,
    BandwidthIndication = 256 + 135,
};

// The element ID that an extension follows.
inline constexpr std::uint8_t kExtendedElementId = 255;

// The number of an element ID extension.
constexpr ElementId extensionElement(std::uint8_t extension) {
    return static_cast<ElementId>(256 + extension);
}

// The first octet of the element.
constexpr std::uint8_t idOctetOf(ElementId id) {
    const auto number = static_cast<std::uint16_t>(id);
    return number < 256 ? static_cast<std::uint8_t>(number) : kExtendedElementId;
}

// The element ID extension; absent if the element has none.
constexpr std::optional<std::uint8_t> extensionOf(ElementId id) {
    const auto number = static_cast<std::uint16_t>(id);
    if (number < 256) return std::nullopt;
    return static_cast<std::uint8_t>(number - 256);
}

}  // namespace halvane::air

#endif
