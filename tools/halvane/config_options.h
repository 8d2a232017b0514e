// The options that make a BSS configuration, for every command that takes one.
#ifndef TOOLS_HALVANE_CONFIG_OPTIONS_H
#define TOOLS_HALVANE_CONFIG_OPTIONS_H

#include <cstdint>
#include <string>
#include <variant>

#include "halvane/model/bss_config.h"
#include "halvane/utils/cli.h"

#include "tools/halvane/argument.h"

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
constexpr CLIOption configFlag(const char* name, std::int32_t* place, const char* help) {
    return {.type = kCLIBoolean,
            .longName = name,
            .valuePtr = place,
            .flags = kCLINoValue,
            .shortHelp = help};
}

// All of them, to be written into a command's table.
#define HALVANE_CONFIG_OPTIONS                                                                     \
    configValue("ssid", &gTypedConfig.ssid, "SSID", "the network's name"),                         \
        configValue("ssid-hex", &gTypedConfig.ssidHex, "HEX", "the same as hexadecimal text"),     \
        configFlag("passphrase", &gTypedConfig.passphrase,                                         \
                   "read it from standard input, or ask for it"),                                  \
        configFlag("key", &gTypedConfig.key, "derive the pre-shared key of the passphrase"),       \
        configValue("authentication", &gTypedConfig.authentication, "WORDS",                       \
                    "Open,SharedKey,LEAP"),                                                        \
        configValue("security", &gTypedConfig.security, "WORDS", "Open,WEP,WPA,WPA2,WPS"),         \
        configValue("unicast", &gTypedConfig.unicast, "WORDS", "TKIP,CCMP,UseGroup"),              \
        configValue("multicast", &gTypedConfig.multicast, "WORDS", "WEP40,WEP104,TKIP,CCMP"),      \
        configValue("key-management", &gTypedConfig.keyManagement, "WORDS", "802.1X,PSK"),         \
        configValue("phy", &gTypedConfig.phy, "WORDS", "802.11b,802.11g,802.11a,802.11n"),         \
        configValue("channel", &gTypedConfig.channel, "N", "channel number"),                      \
        configValue("channel-width", &gTypedConfig.channelWidth, "N", "MHz"),                      \
        configValue("preferred-order", &gTypedConfig.preferredOrder, "N", "place among others"),   \
        configValue("eapol-retries", &gTypedConfig.eapolRetries, "N", "count (default 3)"),        \
        configValue("eapol-interval", &gTypedConfig.eapolInterval, "N", "interval (default 100)"), \
        configValue("gtk-rotation", &gTypedConfig.gtkRotation, "N", "interval (default 300)"),     \
        configValue("wps", &gTypedConfig.wps, "WORDS", "PIN,PushButton"),                          \
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
std::variant<ConfigOptions, UsageError> takeConfigOptions();

// Reads the passphrase and derives the key as asked for. A string tells why that cannot be done.
std::variant<HalvaneBSSConfig, std::string> configurationOf(const ConfigOptions& options);

}  // namespace halvane::tool

#endif
