#include "tools/halvane/config/hostapd_config.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <optional>
#include <span>
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

Value valueIf(bool holds, const char* value) {
    return holds ? Value(value) : std::nullopt;
}

// The words of a list, with blanks between them; absent without any.
class WordList {
  public:
    WordList& add(bool holds, const char* word) {
        if (holds) words_ += (words_.empty() ? "" : " ") + std::string(word);
        return *this;
    }
    Value value() const { return words_.empty() ? std::nullopt : Value(words_); }

  private:
    std::string words_;
};

// --- Name and channel ---

// Blanks at the ends, and octets beyond ASCII, go by their digits.
bool isPlainName(std::string_view ssid) {
    return !ssid.empty() && ssid.front() != ' ' && ssid.back() != ' ' &&
           std::ranges::all_of(ssid, [](char c) { return c >= ' ' && c <= '~'; });
}

Value plainName(const Configuration& c) {
    const std::string ssid = ssidText(c);
    return isPlainName(ssid) ? Value(ssid) : std::nullopt;
}

Value nameInDigits(const Configuration& c) {
    const std::string ssid = ssidText(c);
    return isPlainName(ssid) ? std::nullopt : Value(hexText(ssid));
}

Value nameIsUTF8(const Configuration& c) {
    const std::string ssid = ssidText(c);
    return valueIf(!isPlainName(ssid) && isUTF8Text(ssid), "1");
}

bool isOn5GHz(const Configuration& c) {
    if (const auto band = bandOf(c)) return *band == air::Band::Ghz5;
    return c.allowPHY80211a() && !c.allowPHY80211b() && !c.allowPHY80211g();
}

Value mode(const Configuration& c) {
    if (isOn5GHz(c)) return "a";
    return c.allowPHY80211b() && !c.allowPHY80211g() && !c.allowPHY80211n() ? "b" : "g";
}

Value channel(const Configuration& c) {
    return c.channel() != 0 ? Value(std::to_string(c.channel())) : std::nullopt;
}

bool isWEP(const Configuration& c) {
    return c.allowSecurityWEP() && !isWPA(c);
}

// 802.11n has neither WEP nor TKIP alone.
bool hasHT(const Configuration& c) {
    return c.allowPHY80211n() && !isWEP(c) && !(isWPA(c) && !c.allowUnicastCipherCCMP());
}

// Whether stations without 802.11n are to stay out.
bool requiresHT(const Configuration& c) {
    return hasHT(c) &&
           !(isOn5GHz(c) ? c.allowPHY80211a() : c.allowPHY80211b() || c.allowPHY80211g());
}

Value capabilities(const Configuration& c) {
    const auto wide = wideChannelOf(c);
    if (!wide || !hasHT(c)) return std::nullopt;
    const auto primary = static_cast<std::uint8_t>(c.channel());
    if (wide->center.band == air::Band::Ghz2) {
        return wide->center.number > primary ? "[HT40+]" : "[HT40-]";
    }
    const auto index = wide->indexOf({wide->center.band, primary});
    return index.value_or(0) % 2 == 0 ? "[HT40+]" : "[HT40-]";
}

bool isVeryWide(const Configuration& c) {
    return c.channelWidth() > 40 && hasHT(c) && wideChannelOf(c);
}

Value center(const Configuration& c) {
    if (!isVeryWide(c)) return std::nullopt;
    return std::to_string(wideChannelOf(c)->center.number);
}

// --- Security ---

Value authentication(const Configuration& c) {
    const int algorithms =
        (c.allowAuthenticationOpen() ? 1 : 0) + (c.allowAuthenticationSharedKey() ? 2 : 0);
    return std::to_string(algorithms != 0 ? algorithms : 1);
}

Value wepKey(const Configuration& c) {
    if (!isWEP(c) || !c.passphrase()) return std::nullopt;
    return hexText(c.passphrase()->text());
}

Value versions(const Configuration& c) {
    const int bits = (c.allowSecurityWPA() ? 1 : 0) + (c.allowSecurityWPA2() ? 2 : 0);
    return bits != 0 ? Value(std::to_string(bits)) : std::nullopt;
}

Value keyManagement(const Configuration& c) {
    if (!isWPA(c)) return std::nullopt;
    return WordList()
        .add(c.allowKeyManagementPSK(), "WPA-PSK")
        .add(c.allowKeyManagement8021X(), "WPA-EAP")
        .add(allowsSAE(c), "SAE")
        .value();
}

Value unicastCiphers(const Configuration& c) {
    return WordList()
        .add(c.allowUnicastCipherTKIP(), "TKIP")
        .add(c.allowUnicastCipherCCMP(), "CCMP")
        .value();
}

Value protection(const Configuration& c) {
    const auto level = c.managementFrameProtection();
    if (!level || !c.allowSecurityWPA2()) return std::nullopt;
    return std::to_string(std::int64_t{*level});
}

Value passphrase(const Configuration& c) {
    if (!isPersonal(c) || !c.passphrase()) return std::nullopt;
    return textOf(*c.passphrase());
}

Value key(const Configuration& c) {
    if (!isPersonal(c) || c.passphrase() || !c.keyMaterial()) return std::nullopt;
    return hexText(c.keyMaterial()->text());
}

Value rotation(const Configuration& c) {
    if (!isWPA(c) || c.eapolGTKRotation() < 0) return std::nullopt;
    return std::to_string(c.eapolGTKRotation());
}

Value retries(const Configuration& c) {
    if (!isWPA(c) || c.eapolRetryCount() < 1 || c.eapolRetryCount() > UINT32_MAX) {
        return std::nullopt;
    }
    return std::to_string(c.eapolRetryCount());
}

// --- WPS ---

// hostapd turns WPS off in a hidden network.
bool hasWPS(const Configuration& c) {
    return c.allowSecurityWPS() && !hidesSSID(c);
}

template <auto name>  // a getter of a text
Value wpsName(const Configuration& c) {
    return hasWPS(c) ? std::invoke(name, c) : std::nullopt;
}

Value methods(const Configuration& c) {
    if (!hasWPS(c)) return std::nullopt;
    return WordList()
        .add(c.allowPIN(), "label")
        .add(c.allowPushbutton(), "virtual_push_button")
        .value();
}

Value pin(const Configuration& c) {
    if (!hasWPS(c) || c.wpsPIN() == 0) return std::nullopt;
    char digits[24] = {};
    std::snprintf(digits, sizeof(digits), "%08lld", static_cast<long long>(c.wpsPIN()));
    return digits;
}

// --- The file ---

constexpr ExportLine kDriverLines[] = {
    {"driver", [](const Configuration&) { return Value("nl80211"); }},
};
constexpr ExportLine kNameLines[] = {
    {"ssid", plainName},
    {"ssid2", nameInDigits},
    {"utf8_ssid", nameIsUTF8},
};
constexpr ExportLine kRadioLines[] = {
    {"country_code", [](const Configuration& c) { return Value(c.country()); }},
    {"ieee80211d", [](const Configuration& c) { return valueIf(c.country().has_value(), "1"); }},
    // Channels with radar need it (IEEE 802.11-2020, 11.8), and none at 5 GHz minds it.
    {"ieee80211h", [](const Configuration& c) { return valueIf(c.country() && isOn5GHz(c), "1"); }},
    {"hw_mode", mode},
    {"channel", channel},
    {"ieee80211n", [](const Configuration& c) { return valueIf(hasHT(c), "1"); }},
    {"require_ht", [](const Configuration& c) { return valueIf(requiresHT(c), "1"); }},
    {"ht_capab", capabilities},
    {"ieee80211ac", [](const Configuration& c) { return valueIf(isVeryWide(c), "1"); }},
    {"vht_oper_chwidth",
     [](const Configuration& c) {
         return valueIf(isVeryWide(c), c.channelWidth() == 80 ? "1" : "2");
     }},
    {"vht_oper_centr_freq_seg0_idx", center},
};
constexpr ExportLine kSecurityLines[] = {
    {"auth_algs", authentication},
    {"wep_default_key", [](const Configuration& c) { return valueIf(wepKey(c).has_value(), "0"); }},
    {"wep_key0", wepKey},
    {"wpa", versions},
    {"wpa_key_mgmt", keyManagement},
    {"wpa_pairwise",
     [](const Configuration& c) {
         return c.allowSecurityWPA() ? unicastCiphers(c) : std::nullopt;
     }},
    {"rsn_pairwise",
     [](const Configuration& c) {
         return c.allowSecurityWPA2() ? unicastCiphers(c) : std::nullopt;
     }},
    // hostapd itself takes TKIP for the group if a station may have it, and CCMP otherwise.
    {"group_cipher",
     [](const Configuration& c) {
         return valueIf(isWPA(c) && c.allowMulticastCipherTKIP() && !c.allowUnicastCipherTKIP(),
                        "TKIP");
     }},
    {"ieee80211w", protection},
    {"sae_require_mfp",
     [](const Configuration& c) { return valueIf(allowsSAE(c) && !requiresProtection(c), "1"); }},
};
constexpr ExportLine kSecretLines[] = {
    {"wpa_passphrase", passphrase},
    {"wpa_psk", key},
};
constexpr ExportLine kAccessLines[] = {
    {"ignore_broadcast_ssid", [](const Configuration& c) { return valueIf(hidesSSID(c), "1"); }},
    {"ap_isolate", [](const Configuration& c) { return valueIf(isolatesStations(c), "1"); }},
};
constexpr ExportLine kHandshakeLines[] = {
    {"ieee8021x",
     [](const Configuration& c) { return valueIf(isWPA(c) && c.allowKeyManagement8021X(), "1"); }},
    {"wpa_group_rekey", rotation},
    {"wpa_group_update_count", retries},
    {"wpa_pairwise_update_count", retries},
    {"wps_state", [](const Configuration& c) { return valueIf(hasWPS(c), "2"); }},
    {"eap_server", [](const Configuration& c) { return valueIf(hasWPS(c), "1"); }},
    {"config_methods", methods},
    {"ap_pin", pin},
    {"device_name", wpsName<&Configuration::wpsDeviceName>},
    {"manufacturer", wpsName<&Configuration::wpsManufacturerName>},
    {"model_name", wpsName<&Configuration::wpsModelName>},
    {"model_number", wpsName<&Configuration::wpsModelNumber>},
    {"serial_number", wpsName<&Configuration::wpsSerialNumber>},
};
constexpr ExportSection kSections[] = {
    {"", kDriverLines},   {"", kNameLines},   {"", kAccessLines},   {"", kRadioLines},
    {"", kSecurityLines}, {"", kSecretLines}, {"", kHandshakeLines}};

constexpr ExportGap kRefusals[] = {
    {isWPSAlone, "WPS alone does not say how the network is encrypted."},
    {hasNoSecret, "hostapd needs the passphrase or the key."},
    {[](const Configuration& c) { return c.allowUnicastCipherUseGroup(); },
     "hostapd has no unicast cipher UseGroup."},
    {[](const Configuration& c) { return isWEP(c) && c.allowKeyManagement8021X(); },
     "WEP with 802.1X is not supported."},
};

// The first ones hold for a file alone. A program that runs hostapd makes up for them.
constexpr ExportGap kLosses[] = {
    {[](const Configuration& c) { return c.channel() == 0; },
     "There is no channel: add channel=N, and hw_mode=a if that is on 5 GHz."},
    {[](const Configuration& c) { return c.channel() == 0 && isWide(c); },
     "The channel width is left out, since there is no channel."},
    {[](const Configuration& c) { return isWPA(c) && c.allowKeyManagement8021X(); },
     "There is no RADIUS server: add auth_server_addr, auth_server_port and "
     "auth_server_shared_secret."},
    {hasOrder, "The preferred order is left out: hostapd knows none."},
    {[](const Configuration& c) {
         return !isOn5GHz(c) && c.allowPHY80211g() && !c.allowPHY80211b();
     },
     "hw_mode=g also lets stations with 802.11b in."},
    {[](const Configuration& c) { return c.allowPHY80211n() && !hasHT(c); },
     "802.11n is left out: it has neither WEP nor TKIP alone."},
    {[](const Configuration& c) { return c.allowAuthenticationLEAP(); },
     "LEAP authentication is left out."},
    {[](const Configuration& c) {
         return isWPA(c) && c.eapolRetryInterval() != Configuration::init().eapolRetryInterval();
     },
     "The EAPOL retry interval is left out: hostapd has its own."},
    {[](const Configuration& c) { return isWPA(c) && !retries(c); },
     "The EAPOL retry count is left out: hostapd takes 1 to 4294967295."},
    {[](const Configuration& c) { return isWPA(c) && !rotation(c); },
     "The EAPOL GTK rotation is left out: it is negative."},
    {[](const Configuration& c) { return hasWPSText(c) && !c.allowSecurityWPS(); },
     "The texts for WPS are left out, since WPS is not allowed."},
    {[](const Configuration& c) { return c.allowSecurityWPS() && !hasWPS(c); },
     "WPS is left out: hostapd has none in hidden networks."},
};
constexpr std::size_t kLossesOfFileAlone = 4;

std::string heading(const Configuration& c) {
    const bool isSecret = passphrase(c) || key(c) || wepKey(c);
    return std::string("Start it with: hostapd -i INTERFACE FILE") +
           (isSecret ? "\nIt holds the passphrase or the key: keep it from others." : "");
}

}  // namespace

const HostapdParts kHostapdParts = {kNameLines,
                                    kAccessLines,
                                    kRadioLines,
                                    kSecurityLines,
                                    kHandshakeLines,
                                    kRefusals,
                                    std::span(kLosses).subspan<kLossesOfFileAlone>()};
const ExportFormat kHostapdFormat = {"hostapd", heading, kSections, kRefusals, kLosses};

}  // namespace halvane::tool
