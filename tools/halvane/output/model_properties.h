// The properties of what the Wi-Fi daemon reports.
//
// Keys are the names of the properties. They are stable, because programs read them. An empty
// address is absent.
#ifndef TOOLS_HALVANE_OUTPUT_MODEL_PROPERTIES_H
#define TOOLS_HALVANE_OUTPUT_MODEL_PROPERTIES_H

#include <string_view>
#include <tuple>

#include "halvane/ie/mac.h"
#include "halvane/model/client.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"

#include "tools/halvane/output/property_table.h"
#include "tools/halvane/output/record_properties.h"
#include "tools/halvane/output/regulatory_properties.h"

namespace halvane::tool {

template <>
inline constexpr std::string_view kTableName<HalvaneDevice> = "device";
template <>
inline constexpr auto kProperties<HalvaneDevice> = std::tuple{
    Property{"MACAddress",
             [](const HalvaneDevice& device) { return addressIn(device.MACAddress()); }},
    HALVANE_PROPERTY(deviceIndex),
    HALVANE_PROPERTY(numRadioChains),
};

template <>
inline constexpr std::string_view kTableName<HalvaneInterface> = "interface";
template <>
inline constexpr auto kProperties<HalvaneInterface> = std::tuple{
    Property{"ifMAC",
             [](const HalvaneInterface& interface) { return addressIn(interface.ifMAC()); }},
    HALVANE_PROPERTY(ifName),
    HALVANE_PROPERTY(ifRole),
    HALVANE_PROPERTY(ifSubsystem),
    HALVANE_PROPERTY(wifiDevice),
    HALVANE_PROPERTY(availableChannels),
};

// The properties of a BSS record, then those that a client adds, then the texts of the record.
template <>
inline constexpr std::string_view kTableName<HalvaneClient> = "client";
template <>
inline constexpr auto kProperties<HalvaneClient> = std::tuple_cat(
    kProperties<HalvaneMAC>,
    std::tuple{
        HALVANE_PROPERTY(isAssociated),
        HALVANE_PROPERTY(createTime),
        HALVANE_PROPERTY(joinTime),
        HALVANE_PROPERTY(leftTime),
        HALVANE_PROPERTY(deauthReason),
        Property{"countryCodeText",
                 [](const HalvaneClient& client) { return countryTextOf(client); }},
        Property{"wpsText", [](const HalvaneClient& client) { return setupTextsOf(client); }},
    });

}  // namespace halvane::tool

#endif
