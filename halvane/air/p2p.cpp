#include "halvane/air/p2p.h"

#include <cstddef>

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/vendor_attribute_internal.h"

namespace halvane::air {

namespace {

constexpr BitField kCapability[] = {
    {0, 1, "Service Discovery"},
    {1, 1, "P2P Client Discoverability"},
    {2, 1, "Concurrent Operation"},
    {3, 1, "P2P Infrastructure Managed"},
    {4, 1, "P2P Device Limit"},
    {5, 1, "P2P Invitation Procedure"},
    {6, 2, "Reserved"},
    {8, 1, "P2P Group Owner"},
    {9, 1, "Persistent P2P Group"},
    {10, 1, "P2P Group Limit"},
    {11, 1, "Intra-BSS Distribution"},
    {12, 1, "Cross Connection"},
    {13, 1, "Persistent Reconnect"},
    {14, 1, "Group Formation"},
    {15, 1, "IP Address Allocation"},
};
constexpr BitField kManageability[] = {{0, 1, "P2P Device Management"},
                                       {1, 1, "Cross Connection Permitted"},
                                       {2, 1, "Coexistence Optional"},
                                       {3, 5, "Reserved"}};

constexpr std::uint16_t kCapabilityId = 2;
constexpr std::uint16_t kDeviceId = 3;
constexpr std::uint16_t kDeviceInfoId = 13;

constexpr auto kDeviceInfoLayout = [](auto& codec, auto& info) {
    codec.address("P2P Device Address", info.address);
    codec.bigEndian("Config Methods", info.configMethods);
    codec.octets("Primary Device Type", info.primaryDeviceType);
    codec.template counted<std::uint8_t>(
        "Number of Secondary Device Types", info.secondaryDeviceTypes,
        [&](auto& type) { codec.octets("Secondary Device Type", type); });
    codec.bigEndian("Attribute Type", info.nameType);
    codec.bigEndianSized("Length", [&] { codec.text("Device Name", info.name); });
    codec.rest(info.rest);
};

void tellDeviceInfo(ElementReader& reader) {
    P2pDeviceInfo info;
    kDeviceInfoLayout(reader, info);
}

// The country and the class before a channel.
void tellChannel(ElementReader& reader) {
    ByteBuffer country;
    std::uint8_t number = 0;
    reader.text("Country String", country, 3);
    reader.number("Operating Class", number);
    reader.number("Channel Number", number);
}

void tellGroupId(ElementReader& reader) {
    MacAddress address;
    ByteBuffer ssid;
    reader.address("P2P Device Address", address);
    reader.text("SSID", ssid);
}

constexpr AttributeRow kRows[] = {
    {0, "Status"},
    {1, "Minor Reason Code"},
    {kCapabilityId, "P2P Capability", tellBitFields<2, kCapability>},
    {kDeviceId, "P2P Device ID", tellAddress},
    {4, "Group Owner Intent"},
    {5, "Configuration Timeout"},
    {6, "Listen Channel", tellChannel},
    {7, "P2P Group BSSID", tellAddress},
    {8, "Extended Listen Timing"},
    {9, "Intended P2P Interface Address", tellAddress},
    {10, "P2P Manageability", tellBitFields<1, kManageability>},
    {11, "Channel List"},
    {12, "Notice of Absence"},
    {kDeviceInfoId, "P2P Device Info", tellDeviceInfo},
    {14, "P2P Group Info"},
    {15, "P2P Group ID", tellGroupId},
    {16, "P2P Interface"},
    {17, "Operating Channel", tellChannel},
    {18, "Invitation Flags"},
    {19, "Out-of-Band Group Owner Negotiation Channel"},
    {21, "Service Hash"},
    {22, "Session Information Data Info"},
    {23, "Connection Capability Info"},
    {24, "Advertisement_ID Info"},
    {25, "Advertised Service Info"},
    {26, "Session ID Info"},
    {27, "Feature Capability"},
    {28, "Persistent Group Info"},
    {221, "Vendor Specific"},
};
constexpr auto kNames = attributeNames(kRows);

constexpr auto kLayout = [](auto& codec, auto& element) {
    attributesLayout(
        codec, element.attributes, kRows,
        [&](auto& id) { codec.template numberOf<1>("Attribute ID", id, {.names = kNames}); },
        [&](auto value) { codec.template sized<std::uint16_t>("Length", 0, value); });
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(P2p, kLayout)

bool P2p::has(P2pCapability flag) const {
    const ByteBuffer* value = findAttribute(attributes, kCapabilityId);
    return value != nullptr && bitsOf(value->bytes(), static_cast<std::size_t>(flag), 1) != 0;
}

std::optional<MacAddress> P2p::deviceAddress() const {
    if (const ByteBuffer* value = findAttribute(attributes, kDeviceId)) {
        if (const auto address = MacAddress::fromBytes(value->bytes())) return address;
    }
    const auto info = deviceInfo();
    if (!info) return std::nullopt;
    return info->address;
}

std::optional<P2pDeviceInfo> P2p::deviceInfo() const {
    const ByteBuffer* value = findAttribute(attributes, kDeviceInfoId);
    if (value == nullptr) return std::nullopt;
    return decodeBy<P2pDeviceInfo>(kDeviceInfoLayout, value->bytes());
}

}  // namespace halvane::air
