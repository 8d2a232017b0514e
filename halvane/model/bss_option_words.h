// The words of option strings, by the group of flags that they set (halvane/model/bss_config.h).
#ifndef HALVANE_MODEL_BSS_OPTION_WORDS_H
#define HALVANE_MODEL_BSS_OPTION_WORDS_H

#include <array>
#include <string_view>

#include "halvane/base/cxx20.h"

namespace halvane {

// The words for authentication, security, ciphers of single stations, ciphers of the group, key
// management, PHY modes and methods of WPS:
inline constexpr std::array kBSSAuthenticationWords = {
    std::string_view("Open"),
    std::string_view("SharedKey"),
    std::string_view("LEAP"),
};
// Words for security.
inline constexpr std::array kBSSSecurityWords = {
    std::string_view("Open"), std::string_view("WEP"), std::string_view("WPA"),
    std::string_view("WPA2"), std::string_view("WPS"),
};
// Words for the ciphers of single stations.
inline constexpr std::array kBSSUnicastCipherWords = {
    std::string_view("TKIP"),
    std::string_view("CCMP"),
    std::string_view("UseGroup"),
};
// Words for the ciphers of the group.
inline constexpr std::array kBSSMulticastCipherWords = {
    std::string_view("WEP40"),
    std::string_view("WEP104"),
    std::string_view("TKIP"),
    std::string_view("CCMP"),
};
// Words for key management.
inline constexpr std::array kBSSKeyManagementWords = {
    std::string_view("802.1X"),
    std::string_view("PSK"),
};
// Words for PHY modes.
inline constexpr std::array kBSSPHYModeWords = {
    std::string_view("802.11b"),
    std::string_view("802.11g"),
    std::string_view("802.11a"),
    std::string_view("802.11n"),
};
// Words for the methods of WPS.
inline constexpr std::array kBSSWPSMethodWords = {
    std::string_view("PIN"),
    std::string_view("PushButton"),
};

}  // namespace halvane

#endif
