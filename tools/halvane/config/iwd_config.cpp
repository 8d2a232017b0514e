// The access point profile of iwd, as iwd.ap(5) and iwd.network(5) document it.
#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

#include "halvane/base/byte_buffer.h"
#include "halvane/model/bss_config.h"

#include "tools/halvane/config/configured_security.h"
#include "tools/halvane/config/export_format.h"

namespace halvane::tool {

namespace {

using Configuration = HalvaneBSSConfig;
using Value = std::optional<std::string>;

// A file's name: the SSID, or "=" and its digits if it has other characters than these.
std::string fileName(const std::string& ssid) {
    constexpr std::string_view kPlain =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789 _-";
    const bool isPlain = ssid.find_first_not_of(kPlain) == std::string::npos;
    return isPlain ? ssid : "=" + hexText(ssid);
}

Value ciphers(const Configuration& c) {
    if (c.allowUnicastCipherTKIP() && c.allowUnicastCipherCCMP()) return "TKIP,CCMP";
    return c.allowUnicastCipherTKIP() ? "TKIP" : "CCMP";
}

Value passphrase(const Configuration& c) {
    if (!c.passphrase()) return std::nullopt;
    return keyFileValue(textOf(*c.passphrase()));
}

Value key(const Configuration& c) {
    if (c.passphrase() || !c.keyMaterial()) return std::nullopt;
    return hexText(c.keyMaterial()->text());
}

constexpr ExportLine kGeneral[] = {
    {"Channel",
     [](const Configuration& c) {
         return c.channel() != 0 ? Value(std::to_string(c.channel())) : std::nullopt;
     }},
};
constexpr ExportLine kSecurity[] = {
    {"Passphrase", passphrase},
    {"PreSharedKey", key},
    {"PairwiseCiphers", ciphers},
    {"GroupCipher",
     [](const Configuration& c) { return Value(c.allowMulticastCipherTKIP() ? "TKIP" : "CCMP"); }},
};
constexpr ExportLine kWSC[] = {
    {"DeviceName",
     [](const Configuration& c) {
         const auto& name = c.wpsDeviceName();
         return name && !name->empty() ? Value(keyFileValue(*name)) : std::nullopt;
     }},
};
constexpr ExportSection kSections[] = {
    {"General", kGeneral}, {"Security", kSecurity}, {"WSC", kWSC}};

constexpr ExportGap kRefusals[] = {
    {[](const Configuration& c) { return !c.allowSecurityWPA2() || !c.allowKeyManagementPSK(); },
     "iwd hosts networks with WPA2-Personal alone."},
    {hasNoSecret, "iwd needs the passphrase or the key."},
    {[](const Configuration& c) { return c.allowUnicastCipherUseGroup(); },
     "iwd has no unicast cipher UseGroup."},
    {isolatesStations, "iwd does not keep stations from each other."},
};

constexpr ExportGap kLosses[] = {
    {allowsSAE, "SAE is left out: the network comes out as WPA2-Personal."},
    {protectsFrames, "The protection of management frames is left out."},
    {hidesSSID, "The SSID is not hidden: iwd hosts no hidden networks."},
    {[](const Configuration& c) { return c.allowSecurityWPA(); }, "WPA is left out beside WPA2."},
    {[](const Configuration& c) { return c.allowKeyManagement8021X(); },
     "802.1X is left out beside PSK."},
    {[](const Configuration& c) { return c.country().has_value(); },
     "The country is left out: it stands in main.conf, as Country under [General]."},
    {isWide, "The channel width is left out."},
    {[](const Configuration& c) {
         return !(c.allowPHY80211b() && c.allowPHY80211g() && c.allowPHY80211a() &&
                  c.allowPHY80211n());
     },
     "The choice of PHY modes is left out."},
    {[](const Configuration& c) { return hasOtherRetries(c) || hasOtherRotation(c); },
     "The EAPOL retries and the GTK rotation are left out."},
    {[](const Configuration& c) { return c.allowSecurityWPS(); },
     "WPS is left out: its methods are started over D-Bus."},
    {[](const Configuration& c) {
         return c.wpsManufacturerName() || c.wpsModelName() || c.wpsModelNumber() ||
                c.wpsSerialNumber();
     },
     "The texts for WPS are left out, but for the device name."},
    {hasOrder, "The preferred order is left out."},
};

std::string heading(const Configuration& c) {
    return "Store it as /var/lib/iwd/ap/" + fileName(ssidText(c)) +
           ".ap: the name of the file is the SSID.\n"
           "It holds the passphrase or the key: keep it from others.";
}

}  // namespace

const ExportFormat kIwdFormat = {"iwd", heading, kSections, kRefusals, kLosses};

}  // namespace halvane::tool
