#include "halvane/air/he_operation.h"

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/mcs_map_internal.h"
#include "halvane/air/vht_operation_layout_internal.h"

namespace halvane::air {

namespace {

constexpr ValueName kNoThreshold[] = {{1023, "none"}};

constexpr BitField kParameters[] = {
    {0, 3, "Default PE Duration", {.unit = "4 us"}},
    {3, 1, "TWT Required"},
    {4, 10, "TXOP Duration RTS Threshold", {.unit = "32 us", .names = kNoThreshold}},
    {14, 1, "VHT Operation Information Present"},
    {15, 1, "Co-Hosted BSS"},
    {16, 1, "ER SU Disable"},
    {17, 1, "6 GHz Operation Information Present"},
    {18, 6, "Reserved"},
};

constexpr BitField kBssColorInformation[] = {
    {0, 6, "BSS Color"},
    {6, 1, "Partial BSS Color"},
    {7, 1, "BSS Color Disabled"},
};

constexpr ValueName kWidths[] = {
    {0, "20 MHz"}, {1, "40 MHz"}, {2, "80 MHz"}, {3, "160 or 80+80 MHz"}};
constexpr ValueName kRegulatoryInfos[] = {{0, "indoor access point"},
                                          {1, "standard power access point"},
                                          {2, "very low power access point"},
                                          {3, "indoor enabled access point"},
                                          {4, "indoor standard power access point"},
                                          {8, "indoor standard power access point"}};

constexpr BitField kControl[] = {
    {0, 2, "Channel Width", {.names = kWidths}},
    {2, 1, "Duplicate Beacon"},
    {3, 4, "Regulatory Info", {.names = kRegulatoryInfos}},
    {7, 1, "Reserved"},
};

constexpr auto kSixGhzLayout = [](auto& codec, auto& information) {
    codec.number("Primary Channel", information.primaryChannel);
    codec.bits(information.control, kControl);
    codec.number("Channel Center Frequency Segment 0", information.centerSegment0);
    codec.number("Channel Center Frequency Segment 1", information.centerSegment1);
    codec.number("Minimum Rate", information.minimumRate, {.unit = "Mb/s"});
};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.group("HE Operation Parameters", [&] { codec.bits(element.parameters, kParameters); });
    codec.group("BSS Color Information",
                [&] { codec.bits(element.bssColorInformation, kBssColorInformation); });
    codec.group("Basic HE-MCS and NSS Set",
                [&] { codec.bits(element.basicMcs.fields, kHeMcsFields); });
    codec.when(element.parameters.bit(14), element.vht, [&](auto& information) {
        codec.group("VHT Operation Information",
                    [&] { kVhtOperationInformationLayout(codec, information); });
    });
    codec.when(element.parameters.bit(15), element.maxCoHostedBssidIndicator,
               [&](auto& value) { codec.number("Max Co-Hosted BSSID Indicator", value); });
    codec.when(element.parameters.bit(17), element.sixGhz, [&](auto& information) {
        codec.group("6 GHz Operation Information", [&] { kSixGhzLayout(codec, information); });
    });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(HeOperation, kLayout)

}  // namespace halvane::air
