// The properties of the regulatory records.
//
// Keys are the names of the properties. They are stable, because programs read them.
#ifndef TOOLS_HALVANE_OUTPUT_REGULATORY_PROPERTIES_H
#define TOOLS_HALVANE_OUTPUT_REGULATORY_PROPERTIES_H

#include <string_view>
#include <tuple>

#include "halvane/regulatory/channel.h"
#include "halvane/regulatory/country.h"
#include "halvane/regulatory/sku.h"

#include "tools/halvane/output/property_table.h"

namespace halvane::tool {

template <>
inline constexpr std::string_view kTableName<HalvaneChannel> = "regulatoryChannel";
template <>
inline constexpr auto kProperties<HalvaneChannel> = std::tuple{
    HALVANE_PROPERTY(channelNumber), HALVANE_PROPERTY(channelFrequency),
    HALVANE_PROPERTY(isRadarProne),  HALVANE_PROPERTY(isDisabled),
    HALVANE_PROPERTY(supports40MHz), HALVANE_PROPERTY(supports80MHz),
};

template <>
inline constexpr std::string_view kTableName<HalvaneCountry> = "regulatoryCountry";
template <>
inline constexpr auto kProperties<HalvaneCountry> = std::tuple{
    HALVANE_PROPERTY(friendlyName),
    HALVANE_PROPERTY(isoName),
    HALVANE_PROPERTY(isoCode),
    HALVANE_PROPERTY(channels),
};

template <>
inline constexpr std::string_view kTableName<HalvaneSKU> = "sku";
template <>
inline constexpr auto kProperties<HalvaneSKU> = std::tuple{
    HALVANE_PROPERTY(friendlyName),
    HALVANE_PROPERTY(shortName),
    HALVANE_PROPERTY(countries),
};

}  // namespace halvane::tool

#endif
