#include "tools/halvane/options/config_options.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstring>
#include <new>
#include <optional>
#include <span>
#include <string_view>
#include <system_error>
#include <utility>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/error.h"
#include "halvane/base/number.h"
#include "halvane/base/status.h"
#include "halvane/ie/wps.h"
#include "halvane/model/bss_option_words.h"
#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/utils/text/compare.h"
#include "halvane/utils/text/split.h"

#include "tools/halvane/config/contradictions.h"
#include "tools/halvane/config/preset.h"
#include "tools/halvane/input/passphrase_input.h"
#include "tools/halvane/options/ssid_argument.h"
#include "tools/halvane/output/property_list_output.h"

namespace halvane::tool {

TypedConfig gTypedConfig;

namespace {

using Problem = std::optional<UsageError>;

struct WordsOption {
    const char* name;
    const char* TypedConfig::*typed;
    bool (HalvaneBSSConfig::*set)(std::string_view, std::optional<Error>*);
    std::span<const std::string_view> known;
};
constexpr WordsOption kWordsOptions[] = {
    {"authentication", &TypedConfig::authentication,
     &HalvaneBSSConfig::setAuthenticationWithOptionString_error, kBSSAuthenticationWords},
    {"security", &TypedConfig::security, &HalvaneBSSConfig::setSecurityWithOptionString_error,
     kBSSSecurityWords},
    {"unicast", &TypedConfig::unicast, &HalvaneBSSConfig::setUnicastCipherWithOptionString_error,
     kBSSUnicastCipherWords},
    {"multicast", &TypedConfig::multicast,
     &HalvaneBSSConfig::setMulticastCipherWithOptionString_error, kBSSMulticastCipherWords},
    {"key-management", &TypedConfig::keyManagement,
     &HalvaneBSSConfig::setKeyManagementWithOptionString_error, kBSSKeyManagementWords},
    {"phy", &TypedConfig::phy, &HalvaneBSSConfig::setPHYModeWithOptionString_error,
     kBSSPHYModeWords},
    {"wps", &TypedConfig::wps, &HalvaneBSSConfig::setWPSConfigurationMethodsString_error,
     kBSSWPSMethodWords},
};

struct NumberOption {
    const char* name;
    const char* TypedConfig::*typed;
    void (HalvaneBSSConfig::*set)(std::int64_t);
    std::int64_t least;
};
constexpr NumberOption kNumberOptions[] = {
    {"channel", &TypedConfig::channel, &HalvaneBSSConfig::setChannel, 0},
    {"channel-width", &TypedConfig::channelWidth, &HalvaneBSSConfig::setChannelWidth, 0},
    {"preferred-order", &TypedConfig::preferredOrder, &HalvaneBSSConfig::setPreferredOrder,
     INT64_MIN},
    {"eapol-retries", &TypedConfig::eapolRetries, &HalvaneBSSConfig::setEapolRetryCount, 0},
    {"eapol-interval", &TypedConfig::eapolInterval, &HalvaneBSSConfig::setEapolRetryInterval, 0},
    {"gtk-rotation", &TypedConfig::gtkRotation, &HalvaneBSSConfig::setEapolGTKRotation, 0},
};

struct NameOption {
    const char* name;
    const char* TypedConfig::*typed;
    void (HalvaneBSSConfig::*set)(std::optional<std::string>);
};
constexpr NameOption kNameOptions[] = {
    {"device-name", &TypedConfig::deviceName, &HalvaneBSSConfig::setWpsDeviceName},
    {"manufacturer", &TypedConfig::manufacturer, &HalvaneBSSConfig::setWpsManufacturerName},
    {"model-name", &TypedConfig::modelName, &HalvaneBSSConfig::setWpsModelName},
    {"model-number", &TypedConfig::modelNumber, &HalvaneBSSConfig::setWpsModelNumber},
    {"serial-number", &TypedConfig::serialNumber, &HalvaneBSSConfig::setWpsSerialNumber},
};

UsageError badValue(const char* option, std::string_view value, const std::string& expected) {
    return {std::string("--") + option + ": '" + std::string(value) + "' is not " + expected};
}

// The first piece of a list that is none of `known`.
std::string unknownWord(std::string_view list, std::span<const std::string_view> known) {
    const char* const end = list.data() + list.size();
    const char* next = nullptr;
    std::size_t length = 0;
    for (const char* at = list.data(); TextSep(at, end, ",", &length, &next); at = next) {
        const auto isPiece = [&](std::string_view word) {
            return word.size() == length && memicmp(at, word.data(), length) == 0;
        };
        if (std::ranges::none_of(known, isPiece)) return {at, length};
    }
    return {};
}

std::string listOf(std::span<const std::string_view> words) {
    std::string list;
    for (const std::string_view word : words) {
        if (!list.empty()) list += ", ";
        list += word;
    }
    return list;
}

Problem readWords(HalvaneBSSConfig& configuration, const WordsOption& option, const char* list) {
    if ((configuration.*option.set)(list, nullptr)) return std::nullopt;
    const std::string word = unknownWord(list, option.known);
    return withSuggestion(badValue(option.name, word, "one of " + listOf(option.known)), "", word,
                          option.known);
}

Problem readNumber(HalvaneBSSConfig& configuration, const NumberOption& option, const char* text) {
    std::int64_t number = 0;
    const char* const end = text + std::strlen(text);
    const auto result = std::from_chars(text, end, number);
    if (result.ec == std::errc::result_out_of_range && result.ptr == end) {
        return badValue(option.name, text, "a number that a configuration can hold");
    }
    if (result.ec != std::errc() || result.ptr != end || number < option.least) {
        const char* const range = option.least == 0 ? " from 0 on" : "";
        return badValue(option.name, text, std::string("a whole number") + range);
    }
    (configuration.*option.set)(number);
    return std::nullopt;
}

// Names travel as text in property lists, whatever the output format is.
Problem readName(HalvaneBSSConfig& configuration, const NameOption& option, const char* name) {
    const auto xml = xmlPropertyList(name);
    if (xml) {
        (configuration.*option.set)(name);
        return std::nullopt;
    }
    const auto character = xml.error().character;
    if (!character) return badValue(option.name, name, "UTF-8 text");
    return badValue(option.name, name,
                    "text of a property list, which has no " + codePointName(*character));
}

Problem readPIN(HalvaneBSSConfig& configuration, const char* text) {
    const auto pin = pinOf(text);
    if (!pin || !HalvaneWPS::validateChecksum(pin)) {
        return badValue("wps-pin", text, "a PIN of 8 digits with the right check digit");
    }
    // The check digit of 00000000 is right, but the field would mean that there is no PIN.
    if (*pin == Number(0)) return badValue("wps-pin", text, "a PIN: zero stands for none");
    configuration.setWpsPIN(pin->int64());
    return std::nullopt;
}

Problem readSSID(HalvaneBSSConfig& configuration, const TypedConfig& typed) {
    if (typed.ssid == nullptr && typed.ssidHex == nullptr) return std::nullopt;
    if (typed.ssid != nullptr && typed.ssidHex != nullptr) {
        return UsageError{"--ssid and --ssid-hex do not go together"};
    }
    const bool isHex = typed.ssidHex != nullptr;
    const std::string name = isHex ? "--ssid-hex: " : "--ssid: ";
    const auto ssid = ssidOf(isHex ? typed.ssidHex : typed.ssid, isHex);
    if (!ssid) return UsageError{name + ssid.error().message};
    configuration.setSSID(*ssid);
    return std::nullopt;
}

// Calls `read` for each typed option of the table, up to the first problem.
template <typename Option>
Problem readEach(std::span<const Option> options, HalvaneBSSConfig& configuration,
                 const TypedConfig& typed,
                 Problem (*read)(HalvaneBSSConfig&, const Option&, const char*)) {
    for (const Option& option : options) {
        const char* const text = typed.*option.typed;
        if (text == nullptr) continue;
        if (auto problem = read(configuration, option, text)) return problem;
    }
    return std::nullopt;
}

Problem readAll(HalvaneBSSConfig& configuration, const TypedConfig& typed) {
    if (auto problem = readSSID(configuration, typed)) return problem;
    if (auto problem = readEach<WordsOption>(kWordsOptions, configuration, typed, readWords)) {
        return problem;
    }
    if (auto problem = readEach<NumberOption>(kNumberOptions, configuration, typed, readNumber)) {
        return problem;
    }
    if (auto problem = readEach<NameOption>(kNameOptions, configuration, typed, readName)) {
        return problem;
    }
    if (typed.hidden != 0) configuration.setHiddenSSID(true);
    if (typed.isolate != 0) configuration.setStationIsolation(true);
    return typed.wpsPIN != nullptr ? readPIN(configuration, typed.wpsPIN) : std::nullopt;
}

// The typed preset, or the error that there are two. Null without one.
Result<const Preset*, UsageError> presetIn(const TypedConfig& typed) {
    const Preset* found = nullptr;
    for (std::size_t i = 0; i < kPresets.size(); ++i) {
        if (typed.presets[i] == nullptr) continue;
        if (found != nullptr) {
            return Unexpected(UsageError{std::string("--") + found->name + " and --" +
                                         kPresets[i].name + " do not go together"});
        }
        found = &kPresets[i];
    }
    return found;
}

// The preset comes first, so that words change it.
Problem readPreset(ConfigOptions& options, const TypedConfig& typed) {
    const auto found = presetIn(typed);
    if (!found) return found.error();
    if (*found == nullptr) return std::nullopt;
    const Preset& preset = **found;
    const std::string option = std::string("--") + preset.name;
    if (typed.ssid != nullptr || typed.ssidHex != nullptr) {
        return UsageError{option + " names the SSID: no --ssid or --ssid-hex beside it"};
    }
    const auto ssid =
        ssidOf(typed.presets[static_cast<std::size_t>(&preset - kPresets.data())], false);
    if (!ssid) return UsageError{option + ": " + ssid.error().message};
    options.configuration.setSSID(*ssid);
    applyPreset(options.configuration, preset);
    options.needsPassphrase |= preset.takesPassphrase;
    options.checksPassphrase = true;
    return std::nullopt;
}

// A typed security takes what it demands of the ciphers and key management that were not typed.
void completeSecurity(ConfigOptions& options, const TypedConfig& typed) {
    const bool hasPreset =
        std::ranges::any_of(typed.presets, [](const char* ssid) { return ssid != nullptr; });
    if (typed.security == nullptr || hasPreset) return;
    const UnchosenParts unchosen = {.unicast = typed.unicast == nullptr,
                                    .multicast = typed.multicast == nullptr,
                                    .keyManagement = typed.keyManagement == nullptr};
    options.lacking =
        allowWhatSecurityDemands(options.configuration, unchosen, options.needsPassphrase);
}

Problem conflictIn(const ConfigOptions& options) {
    if (!options.needsKey) return std::nullopt;
    if (options.configuration.allowKeyManagementSAE().value_or(false) &&
        !options.configuration.allowKeyManagementPSK()) {
        return UsageError{"--key is for PSK: SAE takes the passphrase itself"};
    }
    if (options.configuration.wifiSecurity() != kHalvaneSecurityWPAPSK) {
        return UsageError{"--key is for --security=WPA or WPA2 without WPS and 802.1X"};
    }
    if (!options.needsPassphrase || !options.configuration.ssid()) {
        return UsageError{"--key needs --passphrase and --ssid or --ssid-hex"};
    }
    return std::nullopt;
}

}  // namespace

std::optional<UsageError> missingPart(const ConfigOptions& options) {
    if (options.lacking.unicast) {
        return UsageError{"--security: WPA with CCMP for the group needs a cipher: --unicast=CCMP"};
    }
    if (!options.lacking.keyManagement) return std::nullopt;
    return UsageError{
        "--security: WPA and WPA2 need a key: --passphrase (for PSK), or --key-management=802.1X"};
}

Result<ConfigOptions, UsageError> takeConfigOptions() {
    const TypedConfig typed = std::exchange(gTypedConfig, TypedConfig());
    ConfigOptions options;
    if (auto problem = readPreset(options, typed)) return Unexpected(*problem);
    if (auto problem = readAll(options.configuration, typed)) return Unexpected(*problem);
    options.needsPassphrase |= typed.passphrase != 0;
    options.needsKey = typed.key != 0;
    completeSecurity(options, typed);
    if (auto problem = conflictIn(options)) return Unexpected(*problem);
    return options;
}

Result<HalvaneBSSConfig, std::string> configurationOf(const ConfigOptions& options) {
    HalvaneBSSConfig configuration = options.configuration;
    if (!options.needsPassphrase) return configuration;
    const auto input = readPassphrase();
    if (!input) return Unexpected(input.error());
    const ByteBuffer& passphrase = *input;
    std::optional<Error> error;
    if (!configuration.setWirelessPassphrase_error(passphrase.text(), &error)) {
        return Unexpected(error->code == kStatusUnsupported
                              ? "the passphrase is longer than 63 characters"
                              : "the passphrase is not UTF-8 text");
    }
    if (options.checksPassphrase) {
        auto problems = contradictionsOfPassphrase(configuration);
        if (!problems.empty()) return Unexpected(std::move(problems.front().sentence));
    }
    if (!options.needsKey) return configuration;
    configuration.generateKeyMaterial();
    if (configuration.keyMaterial()) return configuration;
    HalvaneBSSConfig::wpaPasswordHash_withSSID_error(passphrase, configuration.ssid(), &error);
    return Unexpected(passphraseProblem(passphrase, error));
}

}  // namespace halvane::tool
