// The key file of a NetworkManager connection, as nm-settings(5) and nm-settings-keyfile(5)
// document it.
#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "halvane/air/channel.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/management_frame_protection.h"

#include "tools/halvane/config/configured_channel.h"
#include "tools/halvane/config/configured_security.h"
#include "tools/halvane/config/export_format.h"

namespace halvane::tool {

namespace {

using Configuration = HalvaneBSSConfig;
using Value = std::optional<std::string>;

// Other names go by their octets, so that nothing in them is taken for a list or an escape.
bool isPlainName(std::string_view ssid) {
    return !ssid.empty() && ssid.front() != ' ' && ssid.back() != ' ' && isUTF8Text(ssid) &&
           std::ranges::none_of(ssid, [](char c) {
               const auto octet = static_cast<std::uint8_t>(c);
               return octet < 0x20 || octet == 0x7F || c == ';' || c == '\\';
           });
}

Value octetList(std::string_view octets) {
    std::string list;
    for (const char c : octets) list += std::to_string(static_cast<std::uint8_t>(c)) + ';';
    return list;
}

Value name(const Configuration& c) {
    const std::string ssid = ssidText(c);
    return isPlainName(ssid) ? Value(ssid) : octetList(ssid);
}

Value identifier(const Configuration& c) {
    const std::string ssid = ssidText(c);
    return isPlainName(ssid) ? Value(ssid) : Value("halvane-" + hexText(ssid));
}

Value band(const Configuration& c) {
    const auto band = bandOf(c);
    if (!band) return std::nullopt;
    return *band == air::Band::Ghz5 ? "a" : "bg";
}

Value channel(const Configuration& c) {
    return bandOf(c) ? Value(std::to_string(c.channel())) : std::nullopt;
}

Value keyManagement(const Configuration& c) {
    if (!isPersonal(c)) return std::nullopt;
    return c.allowKeyManagementPSK() ? "wpa-psk" : "sae";
}

Value listIf(const Configuration& c, bool first, const char* one, bool second, const char* other) {
    if (!isPersonal(c) || (!first && !second)) return std::nullopt;
    return std::string(first ? one : "") + (second ? other : "");
}

Value protection(const Configuration& c) {
    const auto level = c.managementFrameProtection();
    if (!level || !isPersonal(c)) return std::nullopt;
    return std::to_string(std::int64_t{*level} + 1);
}

Value secret(const Configuration& c) {
    if (!isPersonal(c)) return std::nullopt;
    if (c.passphrase()) return keyFileValue(textOf(*c.passphrase()));
    return c.keyMaterial() ? Value(hexText(c.keyMaterial()->text())) : std::nullopt;
}

// Without a value NetworkManager has a default of its own, which its configuration may change.
Value isolation(const Configuration& c) {
    if (!c.stationIsolation()) return std::nullopt;
    return isolatesStations(c) ? "1" : "0";
}

constexpr ExportLine kConnection[] = {
    {"id", identifier},
    {"type", [](const Configuration&) { return Value("wifi"); }},
};
constexpr ExportLine kWifi[] = {
    {"mode", [](const Configuration&) { return Value("ap"); }},
    {"ssid", name},
    {"band", band},
    {"channel", channel},
    {"hidden", [](const Configuration& c) { return hidesSSID(c) ? Value("true") : std::nullopt; }},
    {"ap-isolation", isolation},
};
constexpr ExportLine kSecurity[] = {
    {"key-mgmt", keyManagement},
    {"proto",
     [](const Configuration& c) {
         return listIf(c, c.allowSecurityWPA(), "wpa;", c.allowSecurityWPA2(), "rsn;");
     }},
    {"pairwise",
     [](const Configuration& c) {
         return listIf(c, c.allowUnicastCipherTKIP(), "tkip;", c.allowUnicastCipherCCMP(), "ccmp;");
     }},
    {"group",
     [](const Configuration& c) {
         return listIf(c, c.allowMulticastCipherTKIP(), "tkip;", c.allowMulticastCipherCCMP(),
                       "ccmp;");
     }},
    {"pmf", protection},
    {"psk", secret},
};
// The addresses of stations, which a hosted network has to hand out.
constexpr ExportLine kAddresses[] = {
    {"method", [](const Configuration&) { return Value("shared"); }},
};
constexpr ExportSection kSections[] = {{"connection", kConnection},
                                       {"wifi", kWifi},
                                       {"wifi-security", kSecurity},
                                       {"ipv4", kAddresses}};

constexpr ExportGap kRefusals[] = {
    {isWPSAlone, "WPS alone does not say how the network is encrypted."},
    {[](const Configuration& c) { return c.allowSecurityWEP(); },
     "The export of WEP to NetworkManager is not supported."},
    {[](const Configuration& c) { return isWPA(c) && !isPersonal(c); },
     "NetworkManager hosts no network with 802.1X."},
    {hasNoSecret, "NetworkManager needs the passphrase or the key."},
    {[](const Configuration& c) { return c.allowUnicastCipherUseGroup(); },
     "NetworkManager has no unicast cipher UseGroup."},
};

constexpr ExportGap kLosses[] = {
    {[](const Configuration& c) { return isPersonal(c) && c.allowKeyManagement8021X(); },
     "802.1X is left out beside the passphrase."},
    {isWide, "The channel width is left out."},
    {[](const Configuration& c) { return c.country().has_value(); }, "The country is left out."},
    {[](const Configuration& c) {
         return !(c.allowPHY80211b() && c.allowPHY80211g() && c.allowPHY80211a() &&
                  c.allowPHY80211n());
     },
     "The choice of PHY modes is left out."},
    {[](const Configuration& c) { return hasOtherRetries(c) || hasOtherRotation(c); },
     "The EAPOL retries and the GTK rotation are left out."},
    {[](const Configuration& c) { return c.allowSecurityWPS() || hasWPSText(c); },
     "WPS and its texts are left out."},
    {hasOrder, "The preferred order is left out."},
};

std::string heading(const Configuration& c) {
    return std::string(
               "Store it under /etc/NetworkManager/system-connections/, with the ending "
               ".nmconnection,\nowned by root and with the mode 600") +
           (secret(c) ? ": it holds the passphrase or the key." : ".");
}

}  // namespace

const ExportFormat kNetworkManagerFormat = {"networkmanager", heading, kSections, kRefusals,
                                            kLosses};

}  // namespace halvane::tool
