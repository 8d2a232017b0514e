// The properties of BSS configurations.
//
// Keys are the names of the properties. They are stable, because programs read them. The passphrase
// and the key are included.
#ifndef TOOLS_HALVANE_OUTPUT_CONFIG_PROPERTIES_H
#define TOOLS_HALVANE_OUTPUT_CONFIG_PROPERTIES_H

#include <cstdint>
#include <optional>
#include <string_view>
#include <tuple>

#include "halvane/model/bss_config.h"

#include "tools/halvane/output/property_table.h"

namespace halvane::tool {

template <>
inline constexpr std::string_view kTableName<HalvaneBSSConfig> = "configuration";
template <>
inline constexpr auto kProperties<HalvaneBSSConfig> = std::tuple{
    HALVANE_PROPERTY(ssid),
    HALVANE_PROPERTY(passphrase),
    HALVANE_PROPERTY(keyMaterial),
    HALVANE_PROPERTY(preferredOrder),
    HALVANE_PROPERTY(channel),
    HALVANE_PROPERTY(channelWidth),
    HALVANE_PROPERTY(eapolRetryCount),
    HALVANE_PROPERTY(eapolRetryInterval),
    HALVANE_PROPERTY(eapolGTKRotation),
    HALVANE_PROPERTY(country),
    HALVANE_PROPERTY(allowAuthenticationOpen),
    HALVANE_PROPERTY(allowAuthenticationSharedKey),
    HALVANE_PROPERTY(allowAuthenticationLEAP),
    HALVANE_PROPERTY(allowSecurityOpen),
    HALVANE_PROPERTY(allowSecurityWEP),
    HALVANE_PROPERTY(allowSecurityWPA),
    HALVANE_PROPERTY(allowSecurityWPA2),
    HALVANE_PROPERTY(allowSecurityWPS),
    HALVANE_PROPERTY(allowUnicastCipherTKIP),
    HALVANE_PROPERTY(allowUnicastCipherCCMP),
    HALVANE_PROPERTY(allowUnicastCipherUseGroup),
    HALVANE_PROPERTY(allowMulticastCipherWEP40),
    HALVANE_PROPERTY(allowMulticastCipherWEP104),
    HALVANE_PROPERTY(allowMulticastCipherTKIP),
    HALVANE_PROPERTY(allowMulticastCipherCCMP),
    HALVANE_PROPERTY(allowKeyManagementPSK),
    HALVANE_PROPERTY(allowKeyManagement8021X),
    HALVANE_PROPERTY(allowPHY80211b),
    HALVANE_PROPERTY(allowPHY80211g),
    HALVANE_PROPERTY(allowPHY80211a),
    HALVANE_PROPERTY(allowPHY80211n),
    HALVANE_PROPERTY(allowPIN),
    HALVANE_PROPERTY(allowPushbutton),
    HALVANE_PROPERTY(wpsDeviceName),
    HALVANE_PROPERTY(wpsManufacturerName),
    HALVANE_PROPERTY(wpsModelName),
    HALVANE_PROPERTY(wpsModelNumber),
    HALVANE_PROPERTY(wpsPIN),
    HALVANE_PROPERTY(wpsSerialNumber),
    HALVANE_PROPERTY(allowKeyManagementSAE),
    Property{"managementFrameProtection",
             [](const HalvaneBSSConfig& record) -> std::optional<std::int64_t> {
                 return record.managementFrameProtection();
             }},
    HALVANE_PROPERTY(hiddenSSID),
    HALVANE_PROPERTY(stationIsolation),
    // The SSID as text, behind the properties that programs know the order of.
    Property{"ssidText",
             [](const HalvaneBSSConfig& record) { return shownOctetsIn(record.ssid()); }},
};

}  // namespace halvane::tool

#endif
