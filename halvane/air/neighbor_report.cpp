#include "halvane/air/neighbor_report.h"

#include <algorithm>

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/subelement_internal.h"
#include "halvane/base/byte_cursor.h"

namespace halvane::air {

namespace {

constexpr ValueName kReachabilities[] = {
    {0, "reserved"}, {1, "not reachable"}, {2, "unknown"}, {3, "reachable"}};

// Figures 9-337 and 9-338; 802.11be added the bit 21.
constexpr BitField kInformation[] = {
    {0, 2, "AP Reachability", {.names = kReachabilities}},
    {2, 1, "Security"},
    {3, 1, "Key Scope"},
    {4, 1, "Spectrum Management"},
    {5, 1, "QoS"},
    {6, 1, "APSD"},
    {7, 1, "Radio Measurement"},
    {8, 2, "Reserved"},
    {10, 1, "Mobility Domain"},
    {11, 1, "High Throughput"},
    {12, 1, "Very High Throughput"},
    {13, 1, "FTM"},
    {14, 1, "High Efficiency"},
    {15, 1, "ER BSS"},
    {16, 1, "Co-Located AP"},
    {17, 1, "Unsolicited Probe Responses Active"},
    {18, 1, "Member Of ESS With 2.4/5 GHz Co-Located AP"},
    {19, 1, "OCT Supported With Reporting AP"},
    {20, 1, "Co-Located With 6 GHz AP"},
    {21, 1, "Extremely High Throughput"},
    {22, 10, "Reserved"},
};

constexpr ValueName kPhyTypes[] = {
    {1, "FHSS"}, {2, "DSSS"},  {4, "OFDM"}, {5, "HR/DSSS"}, {6, "ERP"},   {7, "HT"},  {8, "DMG"},
    {9, "VHT"},  {10, "TVHT"}, {11, "S1G"}, {12, "CDMG"},   {13, "CMMG"}, {14, "HE"}, {15, "EHT"}};

constexpr std::uint8_t kTsfInformation = 1;
constexpr std::uint8_t kPreference = 3;

// Table 9-173.
constexpr ValueName kSubelements[] = {
    {kTsfInformation, "TSF Information"},
    {2, "Condensed Country String"},
    {kPreference, "BSS Transition Candidate Preference"},
    {4, "BSS Termination Duration"},
    {5, "Bearing"},
    {6, "Wide Bandwidth Channel"},
    {39, "Measurement Report"},
    {45, "HT Capabilities"},
    {61, "HT Operation"},
    {62, "Secondary Channel Offset"},
    {66, "Measurement Pilot Transmission"},
    {70, "RM Enabled Capabilities"},
    {71, "Multiple BSSID"},
    {191, "VHT Capabilities"},
    {192, "VHT Operation"},
    {193, "HE Capabilities"},
    {194, "HE Operation"},
    {199, "EHT Capabilities"},
    {200, "EHT Operation"},
    {201, "Basic Multi-Link"},
    {221, "Vendor Specific"},
};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.address("BSSID", element.bssid);
    codec.group("BSSID Information", [&] { codec.bits(element.information.fields, kInformation); });
    codec.number("Operating Class", element.operatingClass);
    codec.number("Channel Number", element.channel);
    codec.number("PHY Type", element.phyType, {.names = kPhyTypes});
    kSubelementsLayout(codec, element.subelements, kSubelements);
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(NeighborReport, kLayout)

const Subelement* NeighborReport::find(std::uint8_t id) const {
    const auto found = std::ranges::find(subelements, id, &Subelement::id);
    return found == subelements.end() ? nullptr : &*found;
}

std::optional<std::uint8_t> NeighborReport::preference() const {
    const Subelement* subelement = find(kPreference);
    return subelement ? ByteCursor(subelement->body).u8() : std::nullopt;
}

std::optional<NeighborTsf> NeighborReport::tsf() const {
    const Subelement* subelement = find(kTsfInformation);
    if (!subelement) return std::nullopt;
    ByteCursor cursor(subelement->body);
    const auto offset = cursor.u16le();
    const auto interval = cursor.u16le();
    if (!interval) return std::nullopt;
    return NeighborTsf{*offset, *interval};
}

}  // namespace halvane::air
