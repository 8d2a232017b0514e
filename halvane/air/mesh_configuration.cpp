#include "halvane/air/mesh_configuration.h"

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr ValueName kPathSelections[] = {{1, "HWMP"}, {255, "Vendor specific"}};
constexpr ValueName kMetrics[] = {{1, "Airtime"}, {255, "Vendor specific"}};
constexpr ValueName kCongestionControls[] = {
    {0, "None"}, {1, "Congestion control signaling"}, {255, "Vendor specific"}};
constexpr ValueName kSynchronizations[] = {{1, "Neighbor offset"}, {255, "Vendor specific"}};
constexpr ValueName kAuthentications[] = {
    {0, "None"}, {1, "SAE"}, {2, "802.1X"}, {255, "Vendor specific"}};

constexpr BitField kFormation[] = {
    {0, 1, "Connected To Mesh Gate"}, {1, 6, "Number Of Peerings"}, {7, 1, "Connected To AS"}};
constexpr BitField kCapability[] = {{0, 1, "Accepting Additional Mesh Peerings"},
                                    {1, 1, "MCCA Supported"},
                                    {2, 1, "MCCA Enabled"},
                                    {3, 1, "Forwarding"},
                                    {4, 1, "MBCA Enabled"},
                                    {5, 1, "TBTT Adjusting"},
                                    {6, 1, "Mesh Power Save Level"},
                                    {7, 1, "Reserved"}};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.number("Active Path Selection Protocol Identifier", element.pathSelection,
                 {.names = kPathSelections});
    codec.number("Active Path Selection Metric Identifier", element.metric, {.names = kMetrics});
    codec.number("Congestion Control Mode Identifier", element.congestionControl,
                 {.names = kCongestionControls});
    codec.number("Synchronization Method Identifier", element.synchronization,
                 {.names = kSynchronizations});
    codec.number("Authentication Protocol Identifier", element.authentication,
                 {.names = kAuthentications});
    codec.group("Mesh Formation Info", [&] { codec.bits(element.formation, kFormation); });
    codec.group("Mesh Capability", [&] { codec.bits(element.capability, kCapability); });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(MeshConfiguration, kLayout)

}  // namespace halvane::air
