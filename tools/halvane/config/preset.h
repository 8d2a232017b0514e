// Networks as people name them, as presets of a BSS configuration.
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_CONFIG_PRESET_H
#define TOOLS_HALVANE_CONFIG_PRESET_H

#include <array>
#include <optional>
#include <string_view>

#include "halvane/model/bss_config.h"
#include "halvane/model/management_frame_protection.h"

namespace halvane::tool {

// The words are those of halvane/model/bss_option_words.h.
struct Preset {
    const char* name;  // of its option
    std::string_view security;
    std::string_view cipher;  // of single stations and of the group
    std::string_view keyManagement;
    std::optional<bool> sae;
    std::optional<HalvaneManagementFrameProtection> protection;
    bool takesPassphrase;
};

// SAE demands protected management frames, or stations without it could not tell (IEEE 802.11-2020,
// 12.4, and WPA3 Specification 3.1, 2.2 and 2.3).
inline constexpr auto kPresets = std::to_array<Preset>({
    {"open", "Open", "", "", std::nullopt, std::nullopt, false},
    {"wpa2-personal", "WPA2", "CCMP", "PSK", std::nullopt, std::nullopt, true},
    {"wpa2-wpa3-personal", "WPA2", "CCMP", "PSK", true, kHalvaneManagementFrameProtectionCapable,
     true},
    {"wpa3-personal", "WPA2", "CCMP", "", true, kHalvaneManagementFrameProtectionRequired, true},
    {"wpa2-enterprise", "WPA2", "CCMP", "802.1X", std::nullopt, std::nullopt, false},
});

// Sets all fields that the preset has a word for.
void applyPreset(HalvaneBSSConfig& configuration, const Preset& preset);

// What a network with WPA or WPA2 needs besides, and nobody chose.
struct UnchosenParts {
    bool unicast = false;
    bool multicast = false;
    bool keyManagement = false;
};

// Allows what WPA and WPA2 demand (IEEE 802.11-2020, 9.4.2.24) for each unchosen part: CCMP for
// WPA2 and TKIP for WPA, of which the group takes the weakest one that stations use. With a
// passphrase, or if WPS hands out the key, also PSK. Returns the parts that have no clear choice.
// Nothing changes, and no part is returned, if neither WPA nor WPA2 is allowed.
UnchosenParts allowWhatSecurityDemands(HalvaneBSSConfig& configuration, UnchosenParts unchosen,
                                       bool hasPassphrase);

}  // namespace halvane::tool

#endif
