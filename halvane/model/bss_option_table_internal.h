// The words of each group with the flags that they set.
#ifndef HALVANE_MODEL_BSS_OPTION_TABLE_INTERNAL_H
#define HALVANE_MODEL_BSS_OPTION_TABLE_INTERNAL_H

#include <algorithm>
#include <array>
#include <string_view>

#include "halvane/model/bss_config.h"
#include "halvane/model/bss_option_words.h"

namespace halvane {

struct BSSOption {
    std::string_view word;
    bool (HalvaneBSSConfig::*isAllowed)() const;
    void (HalvaneBSSConfig::*allow)(bool);
};

inline constexpr auto kAuthenticationOptions = std::to_array<BSSOption>({
    {"Open", &HalvaneBSSConfig::allowAuthenticationOpen,
     &HalvaneBSSConfig::setAllowAuthenticationOpen},
    {"SharedKey", &HalvaneBSSConfig::allowAuthenticationSharedKey,
     &HalvaneBSSConfig::setAllowAuthenticationSharedKey},
    {"LEAP", &HalvaneBSSConfig::allowAuthenticationLEAP,
     &HalvaneBSSConfig::setAllowAuthenticationLEAP},
});
static_assert(std::ranges::equal(kAuthenticationOptions, kBSSAuthenticationWords, {},
                                 &BSSOption::word));

inline constexpr auto kSecurityOptions = std::to_array<BSSOption>({
    {"Open", &HalvaneBSSConfig::allowSecurityOpen, &HalvaneBSSConfig::setAllowSecurityOpen},
    {"WEP", &HalvaneBSSConfig::allowSecurityWEP, &HalvaneBSSConfig::setAllowSecurityWEP},
    {"WPA", &HalvaneBSSConfig::allowSecurityWPA, &HalvaneBSSConfig::setAllowSecurityWPA},
    {"WPA2", &HalvaneBSSConfig::allowSecurityWPA2, &HalvaneBSSConfig::setAllowSecurityWPA2},
    {"WPS", &HalvaneBSSConfig::allowSecurityWPS, &HalvaneBSSConfig::setAllowSecurityWPS},
});
static_assert(std::ranges::equal(kSecurityOptions, kBSSSecurityWords, {}, &BSSOption::word));

inline constexpr auto kUnicastCipherOptions = std::to_array<BSSOption>({
    {"TKIP", &HalvaneBSSConfig::allowUnicastCipherTKIP,
     &HalvaneBSSConfig::setAllowUnicastCipherTKIP},
    {"CCMP", &HalvaneBSSConfig::allowUnicastCipherCCMP,
     &HalvaneBSSConfig::setAllowUnicastCipherCCMP},
    {"UseGroup", &HalvaneBSSConfig::allowUnicastCipherUseGroup,
     &HalvaneBSSConfig::setAllowUnicastCipherUseGroup},
});
static_assert(std::ranges::equal(kUnicastCipherOptions, kBSSUnicastCipherWords, {},
                                 &BSSOption::word));

inline constexpr auto kMulticastCipherOptions = std::to_array<BSSOption>({
    {"WEP40", &HalvaneBSSConfig::allowMulticastCipherWEP40,
     &HalvaneBSSConfig::setAllowMulticastCipherWEP40},
    {"WEP104", &HalvaneBSSConfig::allowMulticastCipherWEP104,
     &HalvaneBSSConfig::setAllowMulticastCipherWEP104},
    {"TKIP", &HalvaneBSSConfig::allowMulticastCipherTKIP,
     &HalvaneBSSConfig::setAllowMulticastCipherTKIP},
    {"CCMP", &HalvaneBSSConfig::allowMulticastCipherCCMP,
     &HalvaneBSSConfig::setAllowMulticastCipherCCMP},
});
static_assert(std::ranges::equal(kMulticastCipherOptions, kBSSMulticastCipherWords, {},
                                 &BSSOption::word));

inline constexpr auto kKeyManagementOptions = std::to_array<BSSOption>({
    {"802.1X", &HalvaneBSSConfig::allowKeyManagement8021X,
     &HalvaneBSSConfig::setAllowKeyManagement8021X},
    {"PSK", &HalvaneBSSConfig::allowKeyManagementPSK, &HalvaneBSSConfig::setAllowKeyManagementPSK},
});
static_assert(std::ranges::equal(kKeyManagementOptions, kBSSKeyManagementWords, {},
                                 &BSSOption::word));

inline constexpr auto kPHYModeOptions = std::to_array<BSSOption>({
    {"802.11b", &HalvaneBSSConfig::allowPHY80211b, &HalvaneBSSConfig::setAllowPHY80211b},
    {"802.11g", &HalvaneBSSConfig::allowPHY80211g, &HalvaneBSSConfig::setAllowPHY80211g},
    {"802.11a", &HalvaneBSSConfig::allowPHY80211a, &HalvaneBSSConfig::setAllowPHY80211a},
    {"802.11n", &HalvaneBSSConfig::allowPHY80211n, &HalvaneBSSConfig::setAllowPHY80211n},
});
static_assert(std::ranges::equal(kPHYModeOptions, kBSSPHYModeWords, {}, &BSSOption::word));

inline constexpr auto kWPSMethodOptions = std::to_array<BSSOption>({
    {"PIN", &HalvaneBSSConfig::allowPIN, &HalvaneBSSConfig::setAllowPIN},
    {"PushButton", &HalvaneBSSConfig::allowPushbutton, &HalvaneBSSConfig::setAllowPushbutton},
});
static_assert(std::ranges::equal(kWPSMethodOptions, kBSSWPSMethodWords, {}, &BSSOption::word));

}  // namespace halvane

#endif
