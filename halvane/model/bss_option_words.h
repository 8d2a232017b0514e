// The words of option strings, by the group of flags that they set (halvane/model/bss_config.h).
#ifndef HALVANE_MODEL_BSS_OPTION_WORDS_H
#define HALVANE_MODEL_BSS_OPTION_WORDS_H

#include <array>
#include <string_view>

namespace halvane {

// X(word, getter, setter)
#define HALVANE_BSS_AUTHENTICATION_WORDS(X)                                       \
    X("Open", allowAuthenticationOpen, setAllowAuthenticationOpen)                \
    X("SharedKey", allowAuthenticationSharedKey, setAllowAuthenticationSharedKey) \
    X("LEAP", allowAuthenticationLEAP, setAllowAuthenticationLEAP)

#define HALVANE_BSS_SECURITY_WORDS(X)                  \
    X("Open", allowSecurityOpen, setAllowSecurityOpen) \
    X("WEP", allowSecurityWEP, setAllowSecurityWEP)    \
    X("WPA", allowSecurityWPA, setAllowSecurityWPA)    \
    X("WPA2", allowSecurityWPA2, setAllowSecurityWPA2) \
    X("WPS", allowSecurityWPS, setAllowSecurityWPS)

#define HALVANE_BSS_UNICAST_CIPHER_WORDS(X)                      \
    X("TKIP", allowUnicastCipherTKIP, setAllowUnicastCipherTKIP) \
    X("CCMP", allowUnicastCipherCCMP, setAllowUnicastCipherCCMP) \
    X("UseGroup", allowUnicastCipherUseGroup, setAllowUnicastCipherUseGroup)

#define HALVANE_BSS_MULTICAST_CIPHER_WORDS(X)                              \
    X("WEP40", allowMulticastCipherWEP40, setAllowMulticastCipherWEP40)    \
    X("WEP104", allowMulticastCipherWEP104, setAllowMulticastCipherWEP104) \
    X("TKIP", allowMulticastCipherTKIP, setAllowMulticastCipherTKIP)       \
    X("CCMP", allowMulticastCipherCCMP, setAllowMulticastCipherCCMP)

#define HALVANE_BSS_KEY_MANAGEMENT_WORDS(X)                          \
    X("802.1X", allowKeyManagement8021X, setAllowKeyManagement8021X) \
    X("PSK", allowKeyManagementPSK, setAllowKeyManagementPSK)

#define HALVANE_BSS_PHY_MODE_WORDS(X)               \
    X("802.11b", allowPHY80211b, setAllowPHY80211b) \
    X("802.11g", allowPHY80211g, setAllowPHY80211g) \
    X("802.11a", allowPHY80211a, setAllowPHY80211a) \
    X("802.11n", allowPHY80211n, setAllowPHY80211n)

#define HALVANE_BSS_WPS_METHOD_WORDS(X) \
    X("PIN", allowPIN, setAllowPIN)     \
    X("PushButton", allowPushbutton, setAllowPushbutton)

// The words alone, as a constant array of each group.
#define HALVANE_BSS_WORD(word, getter, setter) std::string_view(word),
#define HALVANE_BSS_WORDS(name, WORDS) inline constexpr std::array name = {WORDS(HALVANE_BSS_WORD)};
HALVANE_BSS_WORDS(kBSSAuthenticationWords, HALVANE_BSS_AUTHENTICATION_WORDS)
HALVANE_BSS_WORDS(kBSSSecurityWords, HALVANE_BSS_SECURITY_WORDS)
HALVANE_BSS_WORDS(kBSSUnicastCipherWords, HALVANE_BSS_UNICAST_CIPHER_WORDS)
HALVANE_BSS_WORDS(kBSSMulticastCipherWords, HALVANE_BSS_MULTICAST_CIPHER_WORDS)
HALVANE_BSS_WORDS(kBSSKeyManagementWords, HALVANE_BSS_KEY_MANAGEMENT_WORDS)
HALVANE_BSS_WORDS(kBSSPHYModeWords, HALVANE_BSS_PHY_MODE_WORDS)
HALVANE_BSS_WORDS(kBSSWPSMethodWords, HALVANE_BSS_WPS_METHOD_WORDS)
#undef HALVANE_BSS_WORD
#undef HALVANE_BSS_WORDS

}  // namespace halvane

#endif
