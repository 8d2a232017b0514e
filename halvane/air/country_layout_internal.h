// The layout of Country, which Channel Switch Wrapper holds too.
#ifndef HALVANE_AIR_COUNTRY_LAYOUT_INTERNAL_H
#define HALVANE_AIR_COUNTRY_LAYOUT_INTERNAL_H

#include "halvane/air/element_codec_internal.h"
#include "halvane/air/field_sink.h"

namespace halvane::air {

inline constexpr ValueName kCountryEnvironments[] = {
    {' ', "all environments"},  {'O', "outdoor"}, {'I', "indoor"},
    {'X', "noncountry entity"}, {1, "table E-1"}, {2, "table E-2"},
    {3, "table E-3"},           {4, "table E-4"}, {5, "table E-5"}};

// A triplet's first octet decides what the others mean, and so do its labels.
inline constexpr auto kCountryTripletLayout = [](auto& codec, auto& triplet) {
    codec.number("First Channel Number or Operating Extension Identifier", triplet.firstChannel);
    const bool isOperating = triplet.isOperating();
    codec.number(isOperating ? "Operating Class" : "Number of Channels", triplet.channelCount);
    if (isOperating) {
        codec.number("Coverage Class", triplet.power, {.unit = "3 us"});
    } else {
        codec.number("Maximum Transmit Power Level", triplet.power,
                     {.unit = "dBm", .isSigned = true});
    }
};

inline constexpr auto kCountryLayout = [](auto& codec, auto& element) {
    codec.octets("Country Code", element.countryCode);
    codec.number("Environment", element.environmentOctet, {.names = kCountryEnvironments});
    codec.wholeItems(3, element.triplets, [&](auto& triplet) {
        codec.group("Triplet", [&] { kCountryTripletLayout(codec, triplet); });
    });
    codec.rest(element.rest);
};

}  // namespace halvane::air

#endif
