// The options that make a BSS configuration, for every command that takes one.
#ifndef TOOLS_HALVANE_OPTIONS_CONFIG_OPTIONS_H
#define TOOLS_HALVANE_OPTIONS_CONFIG_OPTIONS_H

#include <cstdint>
#include <string>

#include "halvane/base/result.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/bss_option_words.h"
#include "halvane/utils/cli.h"

#include "tools/halvane/options/argument.h"

namespace halvane::tool {

// Where the parser leaves what was typed; null, or 0, where it was not. One place does for all
// commands, since one runs at a time.
struct TypedConfig {
    const char* ssid = nullptr;
    const char* ssidHex = nullptr;
    std::int32_t passphrase = 0;
    std::int32_t key = 0;
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
// The help is a list of HALVANE_CONFIG_WORD, of which the first comma goes.
constexpr CLIOption configWords(const char* name, const char** place, const char* list) {
    return configValue(name, place, "WORDS", list + 1);
}
#define HALVANE_CONFIG_WORD(word, getter, setter) "," word
constexpr CLIOption configFlag(const char* name, std::int32_t* place, const char* help) {
    return {.type = kCLIBoolean,
            .longName = name,
            .valuePtr = place,
            .flags = kCLINoValue,
            .shortHelp = help};
}

// All of them, to be written into a command's table.
#define HALVANE_CONFIG_OPTIONS                                                                     \
    configValue("ssid", &gTypedConfig.ssid, "SSID", "the network's name, 1 to 32 octets"),         \
        configValue("ssid-hex", &gTypedConfig.ssidHex, "HEX", "the same as hexadecimal text"),     \
        configFlag("passphrase", &gTypedConfig.passphrase,                                         \
                   "read it from standard input, or ask for it"),                                  \
        configFlag("key", &gTypedConfig.key, "derive the pre-shared key of the passphrase"),       \
        configWords("authentication", &gTypedConfig.authentication,                                \
                    HALVANE_BSS_AUTHENTICATION_WORDS(HALVANE_CONFIG_WORD)),                        \
        configWords("security", &gTypedConfig.security,                                            \
                    HALVANE_BSS_SECURITY_WORDS(HALVANE_CONFIG_WORD)),                              \
        configWords("unicast", &gTypedConfig.unicast,                                              \
                    HALVANE_BSS_UNICAST_CIPHER_WORDS(HALVANE_CONFIG_WORD)),                        \
        configWords("multicast", &gTypedConfig.multicast,                                          \
                    HALVANE_BSS_MULTICAST_CIPHER_WORDS(HALVANE_CONFIG_WORD)),                      \
        configWords("key-management", &gTypedConfig.keyManagement,                                 \
                    HALVANE_BSS_KEY_MANAGEMENT_WORDS(HALVANE_CONFIG_WORD)),                        \
        configWords("phy", &gTypedConfig.phy, HALVANE_BSS_PHY_MODE_WORDS(HALVANE_CONFIG_WORD)),    \
        configValue("channel", &gTypedConfig.channel, "N", "channel number"),                      \
        configValue("channel-width", &gTypedConfig.channelWidth, "N", "MHz"),                      \
        configValue("preferred-order", &gTypedConfig.preferredOrder, "N", "place among others"),   \
        configValue("eapol-retries", &gTypedConfig.eapolRetries, "N", "count (default 3)"),        \
        configValue("eapol-interval", &gTypedConfig.eapolInterval, "N", "interval (default 100)"), \
        configValue("gtk-rotation", &gTypedConfig.gtkRotation, "N", "interval (default 300)"),     \
        configWords("wps", &gTypedConfig.wps, HALVANE_BSS_WPS_METHOD_WORDS(HALVANE_CONFIG_WORD)),  \
        configValue("wps-pin", &gTypedConfig.wpsPIN, "PIN", "of 8 digits, the last one right"),    \
        configValue("device-name", &gTypedConfig.deviceName, "TEXT", "for WPS"),                   \
        configValue("manufacturer", &gTypedConfig.manufacturer, "TEXT", "for WPS"),                \
        configValue("model-name", &gTypedConfig.modelName, "TEXT", "for WPS"),                     \
        configValue("model-number", &gTypedConfig.modelNumber, "TEXT", "for WPS"),                 \
        configValue("serial-number", &gTypedConfig.serialNumber, "TEXT", "for WPS")

// A configuration to which its secrets are yet to be added.
struct ConfigOptions {
    HalvaneBSSConfig configuration = HalvaneBSSConfig::init();
    bool needsPassphrase = false;
    bool needsKey = false;
};

// What was typed since the last call, on top of the defaults.
Result<ConfigOptions, UsageError> takeConfigOptions();

// Reads the passphrase and derives the key as asked for. An error tells why that cannot be done.
Result<HalvaneBSSConfig, std::string> configurationOf(const ConfigOptions& options);

}  // namespace halvane::tool

#endif
