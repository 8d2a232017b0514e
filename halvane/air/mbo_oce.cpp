#include "halvane/air/mbo_oce.h"

#include <cstddef>

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/vendor_attribute_internal.h"

namespace halvane::air {

namespace {

constexpr BitField kApCapability[] = {
    {0, 6, "Reserved"}, {6, 1, "Cellular Data Aware"}, {7, 1, "Reserved"}};
constexpr BitField kOceCapability[] = {
    {0, 3, "OCE Release"},         {3, 1, "STA CFON"},
    {4, 1, "11b-only AP Present"}, {5, 1, "AP With Hidden SSID Present"},
    {6, 1, "Non-OCE AP Present"},  {7, 1, "Reserved"}};
constexpr BitField kWanMetrics[] = {{0, 4, "Available Capacity Downlink"},
                                    {4, 4, "Available Capacity Uplink"}};
constexpr ValueName kDisallowed[] = {{1, "Unspecified"},
                                     {2, "Maximum number of associated stations reached"},
                                     {3, "Air interface is overloaded"},
                                     {4, "Authentication server overloaded"},
                                     {5, "Insufficient RSSI"}};

constexpr std::uint16_t kOceCapabilityId = 101;
constexpr std::uint16_t kWanMetricsId = 103;

void tellDisallowed(ElementReader& reader) {
    std::uint8_t reason = 0;
    reader.number("Reason Code", reason, {.names = kDisallowed});
}

constexpr AttributeRow kRows[] = {
    {1, "MBO AP Capability Indication", tellBitFields<1, kApCapability>},
    {2, "Non-preferred Channel Report"},
    {3, "Cellular Data Capabilities"},
    {4, "Association Disallowed", tellDisallowed},
    {5, "Cellular Data Connection Preference"},
    {6, "Transition Reason Code"},
    {7, "Transition Rejection Reason Code"},
    {8, "Association Retry Delay"},
    {kOceCapabilityId, "OCE Capability Indication", tellBitFields<1, kOceCapability>},
    {102, "RSSI-based (Re-)Association Rejection"},
    {kWanMetricsId, "Reduced WAN Metrics", tellBitFields<1, kWanMetrics>},
    {104, "RNR Completeness"},
    {105, "Probe Suppression BSSIDs"},
    {106, "Probe Suppression SSIDs"},
};
constexpr auto kNames = attributeNames(kRows);

constexpr auto kLayout = [](auto& codec, auto& element) {
    attributesLayout(
        codec, element.attributes, kRows,
        [&](auto& id) { codec.template numberOf<1>("Attribute ID", id, {.names = kNames}); },
        [&](auto value) { codec.template sized<std::uint8_t>("Length", 0, value); });
};

std::optional<int> partOf(const VendorAttributes& attributes, std::uint16_t id, std::size_t first,
                          std::size_t count) {
    const auto octet = attributeOctet(attributes, id);
    if (!octet) return std::nullopt;
    return static_cast<int>(BitOctets<1>{{*octet}}.bits(first, count));
}

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(MboOce, kLayout)

std::optional<int> MboOce::oceRelease() const {
    return partOf(attributes, kOceCapabilityId, 0, 3);
}

std::optional<int> MboOce::downlinkCapacity() const {
    return partOf(attributes, kWanMetricsId, 0, 4);
}

std::optional<int> MboOce::uplinkCapacity() const {
    return partOf(attributes, kWanMetricsId, 4, 4);
}

}  // namespace halvane::air
