// The options that make a BSS configuration, for every command that takes one.
#ifndef TOOLS_HALVANE_OPTIONS_CONFIG_OPTIONS_H
#define TOOLS_HALVANE_OPTIONS_CONFIG_OPTIONS_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "halvane/base/result.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/bss_option_words.h"
#include "halvane/utils/cli.h"

#include "tools/halvane/config/preset.h"
#include "tools/halvane/options/argument.h"

namespace halvane::tool {

// The parser stores the typed values here; null or 0 means not typed. All commands share one place,
// because only one runs at a time.
struct TypedConfig {
    const char* ssid = nullptr;
    const char* ssidHex = nullptr;
    std::int32_t passphrase = 0;
    std::int32_t key = 0;
    std::int32_t hidden = 0;
    std::int32_t isolate = 0;
    const char* authentication = nullptr;
    const char* security = nullptr;
    const char* unicast = nullptr;
    const char* multicast = nullptr;
    const char* keyManagement = nullptr;
    const char* phy = nullptr;
    const char* channel = nullptr;
    const char* channelWidth = nullptr;
    const char* preferredOrder = nullptr;
    const char* eapolRetries = nullptr;
    const char* eapolInterval = nullptr;
    const char* gtkRotation = nullptr;
    const char* wps = nullptr;
    const char* wpsPIN = nullptr;
    const char* deviceName = nullptr;
    const char* manufacturer = nullptr;
    const char* modelName = nullptr;
    const char* modelNumber = nullptr;
    const char* serialNumber = nullptr;
    std::array<const char*, kPresets.size()> presets{};  // the SSID of each
};
extern TypedConfig gTypedConfig;

// Rows of a command's options.
constexpr CLIOption configValue(const char* name, const char** place, const char* value,
                                const char* help) {
    return {.type = kCLIString,
            .longName = name,
            .valuePtr = place,
            .argName = value,
            .flags = kCLIBareName,
            .shortHelp = help};
}
// The words of a group, separated by commas and terminated.
template <const auto& kWords>
constexpr auto kWordList = [] {
    constexpr std::size_t kSize = [] {
        std::size_t size = 0;
        for (const std::string_view word : kWords) size += word.size() + 1;
        return size;
    }();
    std::array<char, kSize> list{};
    char* end = list.data();
    for (const std::string_view word : kWords) {
        end = std::ranges::copy(word, end).out;
        *end++ = ',';
    }
    list.back() = '\0';
    return list;
}();
// The help is the list of the words.
template <const auto& kWords>
constexpr CLIOption configWords(const char* name, const char** place) {
    return configValue(name, place, "WORDS", kWordList<kWords>.data());
}
constexpr CLIOption configFlag(const char* name, std::int32_t* place, const char* help) {
    return {.type = kCLIBoolean,
            .longName = name,
            .valuePtr = place,
            .flags = kCLINoValue,
            .shortHelp = help};
}

// All options, for the table of a command.
#define HALVANE_CONFIG_OPTIONS                                                                  \
    configValue("ssid", &gTypedConfig.ssid, "SSID", "the network's name, 1 to 32 octets"),      \
        configValue("ssid-hex", &gTypedConfig.ssidHex, "HEX", "the SSID as hexadecimal text"),  \
        configFlag("passphrase", &gTypedConfig.passphrase,                                      \
                   "read it from standard input, or ask for it"),                               \
        configFlag("key", &gTypedConfig.key, "derive the pre-shared key of the passphrase"),    \
        configFlag("hidden", &gTypedConfig.hidden, "leave the SSID out of beacons"),            \
        configFlag("isolate", &gTypedConfig.isolate, "keep stations from each other"),          \
        configWords<kBSSAuthenticationWords>("authentication", &gTypedConfig.authentication),   \
        configWords<kBSSSecurityWords>("security", &gTypedConfig.security),                     \
        configWords<kBSSUnicastCipherWords>("unicast", &gTypedConfig.unicast),                  \
        configWords<kBSSMulticastCipherWords>("multicast", &gTypedConfig.multicast),            \
        configWords<kBSSKeyManagementWords>("key-management", &gTypedConfig.keyManagement),     \
        configWords<kBSSPHYModeWords>("phy", &gTypedConfig.phy),                                \
        configValue("channel", &gTypedConfig.channel, "N", "channel number"),                   \
        configValue("channel-width", &gTypedConfig.channelWidth, "N", "in MHz"),                \
        configValue("preferred-order", &gTypedConfig.preferredOrder, "N",                       \
                    "position among others"),                                                   \
        configValue("eapol-retries", &gTypedConfig.eapolRetries, "N", "count (default 3)"),     \
        configValue("eapol-interval", &gTypedConfig.eapolInterval, "N", "in ms (default 100)"), \
        configValue("gtk-rotation", &gTypedConfig.gtkRotation, "N", "in s (default 300)"),      \
        configWords<kBSSWPSMethodWords>("wps", &gTypedConfig.wps),                              \
        configValue("wps-pin", &gTypedConfig.wpsPIN, "PIN", "8 digits, with check digit"),      \
        configValue("device-name", &gTypedConfig.deviceName, "TEXT", "for WPS"),                \
        configValue("manufacturer", &gTypedConfig.manufacturer, "TEXT", "for WPS"),             \
        configValue("model-name", &gTypedConfig.modelName, "TEXT", "for WPS"),                  \
        configValue("model-number", &gTypedConfig.modelNumber, "TEXT", "for WPS"),              \
        configValue("serial-number", &gTypedConfig.serialNumber, "TEXT", "for WPS")

// The presets, for the table of a command that makes new networks.
#define HALVANE_CONFIG_PRESETS                                                                     \
    configValue(kPresets[0].name, &gTypedConfig.presets[0], "SSID", "without encryption"),         \
        configValue(kPresets[1].name, &gTypedConfig.presets[1], "SSID", "WPA2 with a passphrase"), \
        configValue(kPresets[2].name, &gTypedConfig.presets[2], "SSID",                            \
                    "either, for stations old and new"),                                           \
        configValue(kPresets[3].name, &gTypedConfig.presets[3], "SSID", "WPA3 with a passphrase"), \
        configValue(kPresets[4].name, &gTypedConfig.presets[4], "SSID", "WPA2 with 802.1X")

// A configuration without its secrets, which are added later.
struct ConfigOptions {
    HalvaneBSSConfig configuration = HalvaneBSSConfig::init();
    bool needsPassphrase = false;
    bool needsKey = false;
    bool checksPassphrase = false;  // refuses one of which no network can be made
    // What the typed WPA or WPA2 lacks, and no other option tells.
    UnchosenParts lacking{};
};

// Returns what is wrong with options that lack a cipher or the key management.
std::optional<UsageError> missingPart(const ConfigOptions& options);

// Returns the options that were typed since the last call, added to the defaults.
Result<ConfigOptions, UsageError> takeConfigOptions();

// Reads the passphrase and derives the key if the options ask for them. An error states why that
// failed.
Result<HalvaneBSSConfig, std::string> configurationOf(const ConfigOptions& options);

}  // namespace halvane::tool

#endif
