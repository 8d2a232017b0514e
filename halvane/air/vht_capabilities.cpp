#include "halvane/air/vht_capabilities.h"

#include <array>

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/mcs_map_internal.h"

namespace halvane::air {

namespace {

constexpr ValueName kMpduLengths[] = {{0, "3895 octets"}, {1, "7991 octets"}, {2, "11454 octets"}};
constexpr ValueName kWidths[] = {{0, "up to 80 MHz"}, {1, "160 MHz"}, {2, "160 MHz and 80+80 MHz"}};
constexpr ValueName kLinkAdaptation[] = {{0, "none"}, {2, "unsolicited"}, {3, "both"}};

// 9.4.2.157.2.
constexpr BitField kInformation[] = {
    {0, 2, "Maximum MPDU Length", {.names = kMpduLengths}},
    {2, 2, "Supported Channel Width Set", {.names = kWidths}},
    {4, 1, "Rx LDPC"},
    {5, 1, "Short GI For 80 MHz/TVHT_MODE_4C"},
    {6, 1, "Short GI For 160 MHz And 80+80 MHz"},
    {7, 1, "Tx STBC"},
    {8, 3, "Rx STBC"},
    {11, 1, "SU Beamformer Capable"},
    {12, 1, "SU Beamformee Capable"},
    {13, 3, "Beamformee STS Capability"},
    {16, 3, "Number Of Sounding Dimensions"},
    {19, 1, "MU Beamformer Capable"},
    {20, 1, "MU Beamformee Capable"},
    {21, 1, "TXOP PS"},
    {22, 1, "+HTC-VHT Capable"},
    {23, 3, "Maximum A-MPDU Length Exponent"},
    {26, 2, "VHT Link Adaptation Capable", {.names = kLinkAdaptation}},
    {28, 1, "Rx Antenna Pattern Consistency"},
    {29, 1, "Tx Antenna Pattern Consistency"},
    {30, 2, "Extended NSS BW Support"},
};

// 9.4.2.157.3.
constexpr BitField kRxRates[] = {
    {0, 13, "Rx Highest Supported Long GI Data Rate", {.unit = "Mbit/s"}},
    {13, 3, "Maximum NSTS, Total"},
};
constexpr BitField kTxRates[] = {
    {0, 13, "Tx Highest Supported Long GI Data Rate", {.unit = "Mbit/s"}},
    {13, 1, "VHT Extended NSS BW Capable"},
    {14, 2, "Reserved"},
};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.group("VHT Capabilities Information",
                [&] { codec.bits(element.information, kInformation); });
    codec.group("Supported VHT-MCS And NSS Set", [&] {
        codec.group("Rx VHT-MCS Map", [&] { codec.bits(element.rxMcs.fields, kVhtMcsFields); });
        codec.bits(element.rxRates, kRxRates);
        codec.group("Tx VHT-MCS Map", [&] { codec.bits(element.txMcs.fields, kVhtMcsFields); });
        codec.bits(element.txRates, kTxRates);
    });
    codec.rest(element.rest);
};

// Streams at a width, in quarters of those of the map, for each value of Extended NSS BW Support
// (the columns) and Supported Channel Width Set (the rows). Combinations that table 9-272 reserves
// are read without Extended NSS BW.
using Quarters = std::array<std::array<int, 4>, 3>;
constexpr Quarters kQuartersAt80 = {{{4, 4, 4, 4}, {4, 4, 4, 8}, {4, 4, 4, 8}}};
constexpr Quarters kQuartersAt160 = {{{0, 2, 2, 3}, {4, 4, 4, 8}, {4, 4, 4, 4}}};
constexpr Quarters kQuartersAt80Plus80 = {{{0, 0, 2, 3}, {0, 2, 3, 4}, {4, 4, 4, 4}}};

int streamsBy(const Quarters& quarters, const VhtCapabilities& element, int streams) {
    const auto set = static_cast<std::size_t>(element.supportedChannelWidthSet());
    if (set >= quarters.size()) return &quarters == &kQuartersAt80 ? streams : 0;
    return streams * quarters[set][static_cast<std::size_t>(element.extendedNssBw())] / 4;
}

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(VhtCapabilities, kLayout)

std::optional<int> VhtCapabilities::maximumMpduLength() const {
    constexpr std::array<int, 3> kLengths = {3895, 7991, 11454};
    const auto value = information.bits(0, 2);
    if (value >= kLengths.size()) return std::nullopt;
    return kLengths[value];
}

int VhtCapabilities::streamsAt80(int streams) const {
    return streamsBy(kQuartersAt80, *this, streams);
}

int VhtCapabilities::streamsAt160(int streams) const {
    return streamsBy(kQuartersAt160, *this, streams);
}

int VhtCapabilities::streamsAt80Plus80(int streams) const {
    return streamsBy(kQuartersAt80Plus80, *this, streams);
}

}  // namespace halvane::air
