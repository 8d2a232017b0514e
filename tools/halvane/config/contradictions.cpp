#include "tools/halvane/config/contradictions.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

#include "halvane/air/channel.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"
#include "halvane/ie/wps.h"
#include "halvane/model/bss_limits.h"
#include "halvane/model/management_frame_protection.h"
#include "halvane/model/security_kind.h"

#include "tools/halvane/config/configured_channel.h"
#include "tools/halvane/config/configured_security.h"

namespace halvane::tool {

namespace {

using Configuration = HalvaneBSSConfig;

// --- Contradictions without a number in their sentence ---

struct Rule {
    bool (*holds)(const Configuration&);
    const char* sentence;
};

constexpr Rule kSecurityRules[] = {
    {[](const Configuration& c) { return c.wifiSecurity() == kHalvaneSecurityNone; },
     "No security is allowed, and neither is an open network."},
    {[](const Configuration& c) { return c.allowSecurityOpen() && encrypts(c); },
     "The network is open and encrypted at once."},
    {[](const Configuration& c) { return c.allowSecurityWEP() && isWPA(c); },
     "WEP does not go with WPA or WPA2."},
    {[](const Configuration& c) { return isWPA(c) && !hasUnicastCipher(c); },
     "WPA or WPA2 has no unicast cipher."},
    {[](const Configuration& c) { return isWPA(c) && !hasMulticastCipher(c); },
     "WPA or WPA2 has no multicast cipher."},
    {[](const Configuration& c) { return isWPA(c) && !hasKeyManagement(c); },
     "WPA or WPA2 has no key management: PSK, SAE or 802.1X."},
    {[](const Configuration& c) { return c.allowSecurityWEP() && !isWPA(c) && !hasWEPCipher(c); },
     "WEP has no cipher: WEP40 or WEP104, among the multicast ciphers."},
    {[](const Configuration& c) { return isWPA(c) && hasWEPCipher(c); },
     "A cipher of WEP does not protect the group of a network with WPA or WPA2."},
    {[](const Configuration& c) { return multicastCipherCount(c) > 1; },
     "There is more than one multicast cipher, and a group has one."},
    {[](const Configuration& c) {
         return isWPA(c) && c.allowUnicastCipherTKIP() && c.allowMulticastCipherCCMP();
     },
     "Stations with TKIP do not understand a group with CCMP."},
    {[](const Configuration& c) {
         return c.allowUnicastCipherUseGroup() &&
                (c.allowUnicastCipherTKIP() || c.allowUnicastCipherCCMP());
     },
     "The unicast cipher UseGroup does not go with others."},
    {[](const Configuration& c) {
         return !encrypts(c) && !c.allowSecurityWPS() &&
                (hasUnicastCipher(c) || hasMulticastCipher(c));
     },
     "There are ciphers, but the network is open."},
    {[](const Configuration& c) {
         return !encrypts(c) && !c.allowSecurityWPS() && hasKeyManagement(c);
     },
     "There is key management, but the network is open."},
    {[](const Configuration& c) {
         return isWPA(c) && !c.allowAuthenticationOpen() && !allowsSAE(c);
     },
     "WPA and WPA2 need Open authentication."},
    {[](const Configuration& c) {
         return c.allowAuthenticationSharedKey() && !c.allowSecurityWEP();
     },
     "SharedKey authentication needs WEP."},
};

constexpr Rule kProtectionRules[] = {
    {[](const Configuration& c) { return allowsSAE(c) && !c.allowSecurityWPA2(); },
     "SAE needs WPA2, which WPA3 is the successor of."},
    {[](const Configuration& c) { return allowsSAE(c) && allowsTKIP(c); },
     "SAE (WPA3) does not go with TKIP."},
    {[](const Configuration& c) { return allowsSAE(c) && c.allowSecurityWPA(); },
     "SAE (WPA3) does not go with WPA, the predecessor of WPA2."},
    {[](const Configuration& c) { return allowsSAE(c) && !protectsFrames(c); },
     "SAE (WPA3) needs the protection of management frames."},
    {[](const Configuration& c) {
         return allowsSAE(c) && !c.allowKeyManagementPSK() &&
                c.managementFrameProtection() == kHalvaneManagementFrameProtectionCapable;
     },
     "SAE without PSK (WPA3 alone) requires the protection of management frames."},
    {[](const Configuration& c) {
         return requiresProtection(c) &&
                !(c.allowSecurityWPA2() && c.allowUnicastCipherCCMP() && hasKeyManagement(c));
     },
     "The protection of management frames is required, and needs WPA2 with CCMP."},
    {[](const Configuration& c) { return requiresProtection(c) && c.allowSecurityWPA(); },
     "The protection of management frames is required, and stations with WPA have none."},
};

constexpr Rule kSecretRules[] = {
    {[](const Configuration& c) {
         return c.passphrase().has_value() && !encrypts(c) && !c.allowSecurityWPS();
     },
     "There is a passphrase, but the network is open."},
    {[](const Configuration& c) {
         return c.passphrase().has_value() && isWPA(c) && hasKeyManagement(c) && !isPersonal(c);
     },
     "There is a passphrase, but the only key management is 802.1X."},
    {[](const Configuration& c) {
         return isWPA(c) && c.allowKeyManagementPSK() && !c.allowSecurityWPS() && !c.passphrase() &&
                !c.keyMaterial();
     },
     "PSK has neither a passphrase nor a key."},
    {[](const Configuration& c) { return allowsSAE(c) && !c.passphrase(); },
     "SAE has no passphrase, and cannot take a key instead."},
    {[](const Configuration& c) { return c.allowSecurityWEP() && !isWPA(c) && !c.passphrase(); },
     "WEP has no key, which stands in the place of the passphrase."},
};

constexpr Rule kPassphraseRules[] = {
    {[](const Configuration& c) {
         return isPersonal(c) && c.passphrase() && isHexadecimalKey(c.passphrase()->bytes());
     },
     "The passphrase is 64 hexadecimal digits: that is a key, and no passphrase."},
    {[](const Configuration& c) {
         return isPersonal(c) && c.passphrase() && !isPrintable(c.passphrase()->bytes());
     },
     "The passphrase holds a character that is not printable ASCII."},
};

constexpr Rule kWPSRules[] = {
    {[](const Configuration& c) {
         return c.allowSecurityWPS() && !c.allowPIN() && !c.allowPushbutton();
     },
     "WPS has no method: PIN or PushButton."},
    {[](const Configuration& c) {
         return !c.allowSecurityWPS() && (c.allowPIN() || c.allowPushbutton());
     },
     "There are methods of WPS, but WPS is not among the securities."},
    {[](const Configuration& c) { return c.wpsPIN() != 0 && !c.allowPIN(); },
     "There is a PIN, but PIN is no allowed method of WPS."},
    {[](const Configuration& c) {
         return c.allowSecurityWPS() && allowsSAE(c) && !c.allowKeyManagementPSK();
     },
     "WPS hands out keys for PSK, and none for SAE alone."},
};

constexpr Rule kChannelRules[] = {
    {[](const Configuration& c) { return phyModeCount(c) == 0; }, "No PHY mode is allowed."},
    {[](const Configuration& c) {
         return bandOf(c) == air::Band::Ghz5 && !c.allowPHY80211a() && !c.allowPHY80211n();
     },
     "The channel is on 5 GHz, where neither 802.11b nor 802.11g exists."},
    {[](const Configuration& c) {
         return bandOf(c) == air::Band::Ghz2 && !c.allowPHY80211b() && !c.allowPHY80211g() &&
                !c.allowPHY80211n();
     },
     "The channel is on 2.4 GHz, where 802.11a does not exist."},
    {[](const Configuration& c) { return c.channelWidth() > 20 && !c.allowPHY80211n(); },
     "A channel wider than 20 MHz needs 802.11n."},
};

// --- Contradictions with a number ---

using Sentence = std::optional<std::string>;

std::string octets(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " octet" : " octets");
}

Sentence ssidSize(const Configuration& c) {
    if (!c.ssid()) return "There is no SSID.";
    const std::size_t size = c.ssid()->size();
    if (size == 0) return "The SSID is empty.";
    if (size <= kBSSMaxSSIDSize) return std::nullopt;
    return "The SSID has " + octets(size) + ", and 32 are the most.";
}

Sentence passphraseSize(const Configuration& c) {
    if (!c.passphrase() || !isPersonal(c)) return std::nullopt;
    const std::size_t size = c.passphrase()->size();
    if (size >= kBSSMinPassphraseSize && size <= kBSSMaxPassphraseSize) return std::nullopt;
    if (isHexadecimalKey(c.passphrase()->bytes())) return std::nullopt;
    return "The passphrase has " + octets(size) + ", and takes 8 to 63.";
}

Sentence wepKeySize(const Configuration& c) {
    if (!c.passphrase() || !c.allowSecurityWEP() || isWPA(c)) return std::nullopt;
    if (!hasWEPCipher(c) || isWEPKeySize(c, c.passphrase()->size())) return std::nullopt;
    return "The key of WEP has " + octets(c.passphrase()->size()) +
           ": WEP40 takes 5, and WEP104 takes 13.";
}

Sentence keySize(const Configuration& c) {
    if (!c.keyMaterial() || c.keyMaterial()->size() == kBSSKeySize) return std::nullopt;
    return "The key has " + octets(c.keyMaterial()->size()) + ", and a pre-shared key has 32.";
}

Sentence keyOfPassphrase(const Configuration& c) {
    if (!c.keyMaterial() || c.keyMaterial()->size() != kBSSKeySize) return std::nullopt;
    const auto derived = Configuration::wpaPasswordHash_withSSID_error(c.passphrase(), c.ssid());
    if (!derived || derived == c.keyMaterial()) return std::nullopt;
    return "The key is not the one that the passphrase and the SSID make.";
}

Sentence knownProtection(const Configuration& c) {
    const auto protection = c.managementFrameProtection();
    if (!protection) return std::nullopt;
    const std::int64_t number = *protection;
    if (number >= kHalvaneManagementFrameProtectionNone &&
        number <= kHalvaneManagementFrameProtectionRequired) {
        return std::nullopt;
    }
    return "The protection of management frames is " + std::to_string(number) +
           ", and takes 0 (none), 1 (capable) or 2 (required).";
}

Sentence pinDigits(const Configuration& c) {
    constexpr std::int64_t kGreatest = 99999999;
    if (c.wpsPIN() == 0) return std::nullopt;
    if (c.wpsPIN() < 0 || c.wpsPIN() > kGreatest) {
        return "The PIN " + std::to_string(c.wpsPIN()) + " does not have 8 digits.";
    }
    const Number pin(c.wpsPIN());
    if (HalvaneWPS::validateChecksum(pin)) return std::nullopt;
    char digits[16] = {};
    std::snprintf(digits, sizeof(digits), "%08lld", static_cast<long long>(c.wpsPIN()));
    return std::string("The check digit of the PIN ") + digits + " would be " +
           std::to_string(HalvaneWPS::computeChecksum(pin)) + ".";
}

struct NameLimit {
    const char* what;
    const std::optional<std::string>& (Configuration::*name)() const;
    std::size_t most;
};
// Wi-Fi Simple Configuration 2.0, clause 12.
constexpr NameLimit kNameLimits[] = {
    {"device name", &Configuration::wpsDeviceName, 32},
    {"manufacturer's name", &Configuration::wpsManufacturerName, 64},
    {"model name", &Configuration::wpsModelName, 32},
    {"model number", &Configuration::wpsModelNumber, 32},
    {"serial number", &Configuration::wpsSerialNumber, 32},
};

Sentence nameSizes(const Configuration& c) {
    for (const NameLimit& limit : kNameLimits) {
        const auto& name = (c.*limit.name)();
        if (!name || name->size() <= limit.most) continue;
        return std::string("The ") + limit.what + " has " + octets(name->size()) + ", and " +
               std::to_string(limit.most) + " are the most.";
    }
    return std::nullopt;
}

Sentence countryLetters(const Configuration& c) {
    if (!c.country() || isCountryCode(*c.country())) return std::nullopt;
    return "The country is not two capital letters.";
}

Sentence knownChannel(const Configuration& c) {
    if (c.channel() == 0 || bandOf(c)) return std::nullopt;
    return "There is no channel " + std::to_string(c.channel()) + " at 2.4 or 5 GHz.";
}

Sentence knownWidth(const Configuration& c) {
    if (c.channelWidth() == 0 || widthOf(c)) return std::nullopt;
    return "A channel is not " + std::to_string(c.channelWidth()) +
           " MHz wide, but 20, 40, 80 or 160.";
}

Sentence widthOnChannel(const Configuration& c) {
    const auto width = widthOf(c);
    if (!width || !bandOf(c) || *width == air::ChannelWidth::Mhz20) return std::nullopt;
    if (wideChannelOf(c)) return std::nullopt;
    return "Channel " + std::to_string(c.channel()) + " is not part of a channel of " +
           std::to_string(c.channelWidth()) + " MHz.";
}

// Halvane makes no key of such a passphrase, though the standard does.
Sentence passphraseWithoutKey(const Configuration& c) {
    const bool needsKey = isWPA(c) && c.allowKeyManagementPSK();
    if (!needsKey || !c.passphrase() || c.passphrase()->size() != kBSSKeySize) return std::nullopt;
    return "The passphrase has exactly 32 octets, of which Halvane makes no key.";
}

// --- All of them ---

class Findings {
  public:
    void add(std::span<const Rule> rules, const Configuration& configuration) {
        for (const Rule& rule : rules) {
            if (rule.holds(configuration)) found_.push_back({rule.sentence});
        }
    }
    void add(Sentence sentence, bool isOursAlone = false) {
        if (sentence) found_.push_back({*std::move(sentence), isOursAlone});
    }
    std::vector<Contradiction> take() { return std::move(found_); }

  private:
    std::vector<Contradiction> found_;
};

void addThoseOfPassphrase(Findings& findings, const Configuration& configuration) {
    findings.add(kPassphraseRules, configuration);
    findings.add(passphraseSize(configuration));
    findings.add(passphraseWithoutKey(configuration), true);
}

}  // namespace

std::vector<Contradiction> contradictionsIn(const HalvaneBSSConfig& configuration) {
    Findings findings;
    findings.add(ssidSize(configuration));
    findings.add(kSecurityRules, configuration);
    findings.add(kProtectionRules, configuration);
    findings.add(knownProtection(configuration));
    findings.add(kSecretRules, configuration);
    addThoseOfPassphrase(findings, configuration);
    for (const auto check : {wepKeySize, keySize, keyOfPassphrase}) {
        findings.add(check(configuration));
    }
    findings.add(kWPSRules, configuration);
    for (const auto check : {pinDigits, nameSizes, countryLetters}) {
        findings.add(check(configuration));
    }
    findings.add(kChannelRules, configuration);
    for (const auto check : {knownChannel, knownWidth, widthOnChannel}) {
        findings.add(check(configuration));
    }
    return findings.take();
}

std::vector<Contradiction> contradictionsOfPassphrase(const HalvaneBSSConfig& configuration) {
    Findings findings;
    addThoseOfPassphrase(findings, configuration);
    return findings.take();
}

}  // namespace halvane::tool
