#include "halvane/air/he_6ghz_band_capabilities.h"

#include <array>

#include "halvane/air/element_codec_internal.h"

namespace halvane::air {

namespace {

constexpr ValueName kSpacings[] = {{0, "no limit"}, {1, "1/4 us"}, {2, "1/2 us"}, {3, "1 us"},
                                   {4, "2 us"},     {5, "4 us"},   {6, "8 us"},   {7, "16 us"}};
constexpr ValueName kMpduLengths[] = {{0, "3895 octets"}, {1, "7991 octets"}, {2, "11454 octets"}};
constexpr ValueName kSmPowerSave[] = {{0, "static"}, {1, "dynamic"}, {3, "disabled"}};

// 9.4.2.263.
constexpr BitField kInformation[] = {
    {0, 3, "Minimum MPDU Start Spacing", {.names = kSpacings}},
    {3, 3, "Maximum A-MPDU Length Exponent"},
    {6, 2, "Maximum MPDU Length", {.names = kMpduLengths}},
    {8, 1, "Reserved"},
    {9, 2, "SM Power Save", {.names = kSmPowerSave}},
    {11, 1, "RD Responder"},
    {12, 1, "Rx Antenna Pattern Consistency"},
    {13, 1, "Tx Antenna Pattern Consistency"},
    {14, 2, "Reserved"},
};

constexpr auto kLayout = [](auto& codec, auto& element) {
    codec.group("Capabilities Information", [&] { codec.bits(element.information, kInformation); });
    codec.rest(element.rest);
};

}  // namespace

HALVANE_AIR_DEFINE_ELEMENT(He6GhzBandCapabilities, kLayout)

std::optional<int> He6GhzBandCapabilities::maximumMpduLength() const {
    constexpr std::array<int, 3> kLengths = {3895, 7991, 11454};
    const auto value = information.bits(6, 2);
    if (value >= kLengths.size()) return std::nullopt;
    return kLengths[value];
}

}  // namespace halvane::air
