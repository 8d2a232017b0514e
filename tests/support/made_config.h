// BSS configurations of usual networks.
#ifndef TESTS_SUPPORT_MADE_CONFIG_H
#define TESTS_SUPPORT_MADE_CONFIG_H

#include <gtest/gtest.h>
#include <initializer_list>
#include <string_view>
#include <utility>

#include "halvane/base/property_list_value.h"
#include "halvane/base/ssid.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/management_frame_protection.h"

namespace halvane::testing {

inline HalvaneBSSConfig readConfig(
    std::initializer_list<std::pair<const char*, PropertyListValue>> entries) {
    PropertyListDictionary skeleton;
    for (const auto& [key, value] : entries) skeleton.set(key, value);
    return HalvaneBSSConfig::initWithSkeletonRepresentation(skeleton);
}

// The SSID may be any octets, at most 32 of them.
inline HalvaneBSSConfig openNetwork(std::string_view ssid = "home") {
    auto configuration = HalvaneBSSConfig::init();
    configuration.setSSID(Ssid::fromText(ssid).value());
    return configuration;
}

inline HalvaneBSSConfig wpa2Network(std::string_view keyManagement, std::string_view ssid) {
    auto configuration = openNetwork(ssid);
    EXPECT_TRUE(configuration.setSecurityWithOptionString_error("WPA2"));
    EXPECT_TRUE(configuration.setUnicastCipherWithOptionString_error("CCMP"));
    EXPECT_TRUE(configuration.setMulticastCipherWithOptionString_error("CCMP"));
    EXPECT_TRUE(configuration.setKeyManagementWithOptionString_error(keyManagement));
    return configuration;
}

inline HalvaneBSSConfig enterpriseNetwork(std::string_view ssid = "home") {
    return wpa2Network("802.1X", ssid);
}

inline HalvaneBSSConfig personalNetwork(std::string_view ssid = "home",
                                        std::string_view passphrase = "password") {
    auto configuration = wpa2Network("PSK", ssid);
    EXPECT_TRUE(configuration.setWirelessPassphrase_error(passphrase));
    return configuration;
}

// Also with PSK, for stations that have no SAE, or without.
inline HalvaneBSSConfig wpa3Network(bool hasPSK, std::string_view ssid = "home") {
    auto configuration = personalNetwork(ssid);
    configuration.setAllowKeyManagementSAE(true);
    configuration.setAllowKeyManagementPSK(hasPSK);
    configuration.setManagementFrameProtection(hasPSK ? kHalvaneManagementFrameProtectionCapable
                                                      : kHalvaneManagementFrameProtectionRequired);
    return configuration;
}

}  // namespace halvane::testing

#endif
