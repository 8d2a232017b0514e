// What the daemons of this library ask of roles and configurations (docs/protocol.md).
//
// Functions without state; any thread may call them.
#ifndef HALVANE_SERVICE_HOSTING_RULES_INTERNAL_H
#define HALVANE_SERVICE_HOSTING_RULES_INTERNAL_H

#include <string>

#include "halvane/model/bss_config.h"
#include "halvane/model/bss_limits.h"
#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/utils/strings.h"

namespace halvane {

// The role in which an interface hosts networks, in any case.
inline constexpr const char kHostRole[] = "AP";

inline bool isHostRole(const std::string& role) {
    return strnicmpx(role.data(), role.size(), kHostRole) == 0;
}

// Whether lists can carry the name: it is text of XML 1.0.
inline bool isText(const std::string& name) {
    return xmlPropertyList(name).has_value();
}

inline bool isRole(const std::string& role) {
    return !role.empty() && isText(role);
}

// Whether the configuration has an SSID of 1 to 32 octets (IEEE 802.11-2020, 9.4.2.2).
inline bool hasUsableSSID(const HalvaneBSSConfig& configuration) {
    const auto& ssid = configuration.ssid();
    return ssid && !ssid->empty() && ssid->size() <= kBSSMaxSSIDSize;
}

}  // namespace halvane

#endif
