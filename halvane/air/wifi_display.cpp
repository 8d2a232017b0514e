#include "halvane/air/wifi_display.h"

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/vendor_attribute_internal.h"
#include "halvane/base/byte_buffer.h"

namespace halvane::air {

namespace {

constexpr std::uint16_t kDeviceInformation = 0;

constexpr auto kDeviceLayout = [](auto& codec, auto& device) {
    codec.bigEndian("WFD Device Information", device.information);
    codec.bigEndian("Session Management Control Port", device.controlPort);
    codec.bigEndian("WFD Device Maximum Throughput", device.maximumThroughput, {.unit = "Mbit/s"});
};
void tellDevice(ElementReader& reader) {
    WifiDisplayDevice device;
    kDeviceLayout(reader, device);
}

constexpr AttributeRow kRows[] = {
    {kDeviceInformation, "WFD Device Information", tellDevice},
    {1, "Associated BSSID", tellAddress},
    {2, "WFD Audio Formats"},
    {3, "WFD Video Formats"},
    {4, "WFD 3D Video Formats"},
    {5, "WFD Content Protection"},
    {6, "Coupled Sink Information"},
    {7, "WFD Extended Capability", tellBigEndian<std::uint16_t>},
    {8, "Local IP Address"},
    {9, "WFD Session Information"},
    {10, "Alternative MAC Address", tellAddress},
    {11, "WFD R2 Device Information", tellBigEndian<std::uint16_t>},
};
constexpr auto kNames = attributeNames(kRows);

constexpr auto kLayout = [](auto& codec, auto& element) {
    attributesLayout(
        codec, element.attributes, kRows,
        [&](auto& id) { codec.template numberOf<1>("Subelement ID", id, {.names = kNames}); },
        [&](auto value) { codec.bigEndianSized("Length", value); });
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(WifiDisplay, kLayout)

std::optional<WifiDisplayDevice> WifiDisplay::device() const {
    const ByteBuffer* value = findAttribute(attributes, kDeviceInformation);
    if (value == nullptr) return std::nullopt;
    return decodeBy<WifiDisplayDevice>(kDeviceLayout, value->bytes());
}

}  // namespace halvane::air
