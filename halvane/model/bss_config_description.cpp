#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <optional>
#include <span>
#include <string>

#include "halvane/ie/fancy_formatting.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/bss_option_table_internal.h"
#include "halvane/utils/printf/std_string_internal.h"

namespace halvane {

namespace {

using FancyFormatting::formattedData_includeHex;
using FancyFormatting::formattedHexData;

// A description names PSK first.
constexpr std::array kKeyManagementLine = {kKeyManagementOptions[1], kKeyManagementOptions[0]};

struct FlagLine {
    const char* label;
    std::span<const BSSOption> group;
};
constexpr FlagLine kFlagLines[] = {
    {"Authentication        : ", kAuthenticationOptions},
    {"Security              : ", kSecurityOptions},
    {"Unicast Ciphers       : ", kUnicastCipherOptions},
    {"Multicast Cipher      : ", kMulticastCipherOptions},
    {"Key Management        : ", kKeyManagementLine},
    {"PHY Modes             : ", kPHYModeOptions},
};
constexpr FlagLine kWPSMethodLine = {"WPS Config Methods    : ", kWPSMethodOptions};

struct NumberLine {
    const char* format;
    std::int64_t (HalvaneBSSConfig::*number)() const;
};
constexpr NumberLine kNumberLines[] = {
    {"Channel               : %lld\n", &HalvaneBSSConfig::channel},
    {"Channel Width         : %lld\n", &HalvaneBSSConfig::channelWidth},
    {"EAPOL Retry Count     : %lld\n", &HalvaneBSSConfig::eapolRetryCount},
    {"EAPOL Retry Interval  : %lld\n", &HalvaneBSSConfig::eapolRetryInterval},
    {"EAPOL GTK Rotation    : %lld\n", &HalvaneBSSConfig::eapolGTKRotation},
};

struct NameLine {
    const char* label;
    const std::optional<std::string>& (HalvaneBSSConfig::*name)() const;
};
constexpr NameLine kNameLines[] = {
    {"WPS Device Name       : ", &HalvaneBSSConfig::wpsDeviceName},
    {"WPS Manufacturer Name : ", &HalvaneBSSConfig::wpsManufacturerName},
    {"WPS Model Name        : ", &HalvaneBSSConfig::wpsModelName},
    {"WPS Model Number      : ", &HalvaneBSSConfig::wpsModelNumber},
    {"WPS Serial Number     : ", &HalvaneBSSConfig::wpsSerialNumber},
};

void appendNumber(std::string& text, const char* format, std::int64_t number) {
    appendPrintF(text, format, static_cast<long long>(number));
}

// Texts are appended, not formatted: a NUL within one must not end it.
void appendText(std::string& text, const char* label, const std::string& value) {
    text += label;
    text += value;
    text += '\n';
}

void appendChoice(std::string& text, const char* label, std::optional<bool> choice) {
    if (choice) appendText(text, label, *choice ? "YES" : "NO");
}

constexpr const char* kProtectionWords[] = {"none", "capable", "required"};

void appendProtection(std::string& text, HalvaneManagementFrameProtection protection) {
    const auto number = static_cast<std::uint64_t>(protection);
    const bool isKnown = number < std::size(kProtectionWords);
    text += "Management Frames     : protection ";
    text += isKnown ? kProtectionWords[number] : std::to_string(std::int64_t{protection});
    text += '\n';
}

void appendFlags(std::string& text, const HalvaneBSSConfig& configuration, const FlagLine& line) {
    text += line.label;
    for (const BSSOption& option : line.group) {
        if (!(configuration.*option.isAllowed)()) continue;
        text += option.word;
        text += ' ';
    }
    text += '\n';
}

}  // namespace

std::string HalvaneBSSConfig::description() const {
    std::string text;
    appendNumber(text, "Preferred Order       : %lld\n", preferredOrder());
    if (country()) appendText(text, "Country               : ", *country());
    if (ssid()) {
        appendText(text, "SSID                  : ", formattedData_includeHex(*ssid(), false));
    }
    if (passphrase()) {
        appendText(text, "Passphrase            : ", formattedData_includeHex(*passphrase(), true));
    }
    if (keyMaterial()) {
        appendText(text, "Key Material          : ", formattedHexData(*keyMaterial()));
    }
    for (const FlagLine& line : kFlagLines) appendFlags(text, *this, line);
    for (const NumberLine& line : kNumberLines) {
        appendNumber(text, line.format, (this->*line.number)());
    }
    for (const NameLine& line : kNameLines) {
        if (const auto& name = (this->*line.name)()) appendText(text, line.label, *name);
    }
    if (allowPIN() || allowPushbutton()) appendFlags(text, *this, kWPSMethodLine);
    if (wpsPIN() != 0) appendNumber(text, "WPS PIN               : %lld\n", wpsPIN());
    appendChoice(text, "SAE                   : ", allowKeyManagementSAE());
    if (const auto protection = managementFrameProtection()) appendProtection(text, *protection);
    appendChoice(text, "Hidden SSID           : ", hiddenSSID());
    appendChoice(text, "Station Isolation     : ", stationIsolation());
    return text;
}

}  // namespace halvane
