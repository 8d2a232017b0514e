// The words of a group together with the flags that they stand for.
#ifndef HALVANE_MODEL_BSS_OPTION_TABLE_INTERNAL_H
#define HALVANE_MODEL_BSS_OPTION_TABLE_INTERNAL_H

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

#define HALVANE_BSS_OPTION(word, getter, setter) \
    BSSOption{word, &HalvaneBSSConfig::getter, &HalvaneBSSConfig::setter},
#define HALVANE_BSS_OPTIONS(name, WORDS) \
    inline constexpr std::array name = {WORDS(HALVANE_BSS_OPTION)};
HALVANE_BSS_OPTIONS(kAuthenticationOptions, HALVANE_BSS_AUTHENTICATION_WORDS)
HALVANE_BSS_OPTIONS(kSecurityOptions, HALVANE_BSS_SECURITY_WORDS)
HALVANE_BSS_OPTIONS(kUnicastCipherOptions, HALVANE_BSS_UNICAST_CIPHER_WORDS)
HALVANE_BSS_OPTIONS(kMulticastCipherOptions, HALVANE_BSS_MULTICAST_CIPHER_WORDS)
HALVANE_BSS_OPTIONS(kKeyManagementOptions, HALVANE_BSS_KEY_MANAGEMENT_WORDS)
HALVANE_BSS_OPTIONS(kPHYModeOptions, HALVANE_BSS_PHY_MODE_WORDS)
HALVANE_BSS_OPTIONS(kWPSMethodOptions, HALVANE_BSS_WPS_METHOD_WORDS)
#undef HALVANE_BSS_OPTION
#undef HALVANE_BSS_OPTIONS

}  // namespace halvane

#endif
