#include "halvane/air/extended_capabilities.h"

#include <algorithm>

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr ValueName kGranularities[] = {{0, "5 ms"},  {1, "10 ms"}, {2, "15 ms"}, {3, "20 ms"},
                                        {4, "25 ms"}, {5, "30 ms"}, {6, "35 ms"}, {7, "40 ms"}};
constexpr ValueName kMsdus[] = {{0, "no limit"}, {1, "32"}, {2, "16"}, {3, "8"}};

// Table 9-153.
constexpr BitField kCapabilities[] = {
    {0, 1, "20/40 BSS Coexistence Management Support"},
    {1, 1, "General Link"},
    {2, 1, "Extended Channel Switching"},
    {3, 1, "GLK-GCR"},
    {4, 1, "PSMP Capability"},
    {5, 1, "Reserved"},
    {6, 1, "S-PSMP Support"},
    {7, 1, "Event"},
    {8, 1, "Diagnostics"},
    {9, 1, "Multicast Diagnostics"},
    {10, 1, "Location Tracking"},
    {11, 1, "FMS"},
    {12, 1, "Proxy ARP Service"},
    {13, 1, "Collocated Interference Reporting"},
    {14, 1, "Civic Location"},
    {15, 1, "Geospatial Location"},
    {16, 1, "TFS"},
    {17, 1, "WNM Sleep Mode"},
    {18, 1, "TIM Broadcast"},
    {19, 1, "BSS Transition"},
    {20, 1, "QoS Traffic Capability"},
    {21, 1, "AC Station Count"},
    {22, 1, "Multiple BSSID"},
    {23, 1, "Timing Measurement"},
    {24, 1, "Channel Usage"},
    {25, 1, "SSID List"},
    {26, 1, "DMS"},
    {27, 1, "UTC TSF Offset"},
    {28, 1, "TPU Buffer STA Support"},
    {29, 1, "TDLS Peer PSM Support"},
    {30, 1, "TDLS Channel Switching"},
    {31, 1, "Interworking"},
    {32, 1, "QoS Map"},
    {33, 1, "EBR"},
    {34, 1, "SSPN Interface"},
    {35, 1, "Reserved"},
    {36, 1, "MSGCF Capability"},
    {37, 1, "TDLS Support"},
    {38, 1, "TDLS Prohibited"},
    {39, 1, "TDLS Channel Switching Prohibited"},
    {40, 1, "Reject Unadmitted Frame"},
    {41, 3, "Service Interval Granularity", {.names = kGranularities}},
    {44, 1, "Identifier Location"},
    {45, 1, "U-APSD Coexistence"},
    {46, 1, "WNM Notification"},
    {47, 1, "QAB Capability"},
    {48, 1, "UTF-8 SSID"},
    {49, 1, "QMF Activated"},
    {50, 1, "QMF Reconfiguration Activated"},
    {51, 1, "Robust AV Streaming"},
    {52, 1, "Advanced GCR"},
    {53, 1, "Mesh GCR"},
    {54, 1, "SCS"},
    {55, 1, "QLoad Report"},
    {56, 1, "Alternate EDCA"},
    {57, 1, "Unprotected TXOP Negotiation"},
    {58, 1, "Protected TXOP Negotiation"},
    {59, 1, "Reserved"},
    {60, 1, "Protected QLoad Report"},
    {61, 1, "TDLS Wider Bandwidth"},
    {62, 1, "Operating Mode Notification"},
    {63, 2, "Max Number Of MSDUs In A-MSDU", {.names = kMsdus}},
    {65, 1, "Channel Schedule Management"},
    {66, 1, "Geodatabase Inband Enabling Signal"},
    {67, 1, "Network Channel Control"},
    {68, 1, "White Space Map"},
    {69, 1, "Channel Availability Query"},
    {70, 1, "Fine Timing Measurement Responder"},
    {71, 1, "Fine Timing Measurement Initiator"},
    {72, 1, "FILS Capability"},
    {73, 1, "Extended Spectrum Management Capable"},
    {74, 1, "Future Channel Guidance"},
    {75, 1, "PAD"},
    {76, 1, "Reserved"},
    {77, 1, "TWT Requester Support"},
    {78, 1, "TWT Responder Support"},
    {79, 1, "OBSS Narrow Bandwidth RU In OFDMA Tolerance Support"},
    {80, 1, "Complete List Of NonTxBSSID Profiles"},
    {81, 1, "SAE Password Identifiers In Use"},
    {82, 1, "SAE Password Identifiers Used Exclusively"},
    {83, 1, "Enhanced Multi-BSSID Advertisement Support"},
    {84, 1, "Beacon Protection Enabled"},
    {85, 1, "Mirrored SCS"},
    {86, 1, "OCT"},
    {87, 1, "Local MAC Address Policy"},
    {88, 1, "SAE-PK Passwords Used Exclusively"},
    {89, 1, "TWT Parameters Range Support"},
    {90, 1, "Non-TB Ranging Responder"},
    {91, 1, "TB Ranging Responder"},
    {92, 1, "Passive TB Ranging Responder Measurement Support"},
    {93, 1, "Passive TB Ranging Initiator Measurement Support"},
    {94, 1, "AOA Measurement Available"},
    {95, 1, "Phase Shift Feedback Support"},
    {96, 1, "DMG/Location Supporting APs In The Area"},
    {97, 1, "I2R LMR Feedback Policy"},
    {98, 6, "Reserved"},
};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.bitString(
        element.octets, [](Octets left) { return left.size(); },
        [](BitTeller& teller) { teller.runs(kCapabilities); });
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(ExtendedCapabilities, kLayout)

void ExtendedCapabilities::setCapability(ExtendedCapability flag) {
    const auto bit = static_cast<std::size_t>(flag);
    std::vector<std::uint8_t> changed(octets.begin(), octets.end());
    changed.resize(std::max(changed.size(), bit / 8 + 1));
    changed[bit / 8] = static_cast<std::uint8_t>(changed[bit / 8] | 1u << bit % 8);
    octets = ByteBuffer(changed);
}

}  // namespace halvane::air
