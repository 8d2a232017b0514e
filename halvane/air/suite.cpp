#include "halvane/air/suite.h"

#include <cstddef>
#include <span>

#include "halvane/base/ascii_internal.h"

namespace halvane::air {

namespace {

struct SuiteName {
    Suite suite;
    std::string_view name;
};

constexpr OUI kCckmOUI = {0x00, 0x40, 0x96};
constexpr OUI kWapiOUI = {0x00, 0x14, 0x72};

// Table 9-149; the cipher of WAPI.
constexpr SuiteName kCiphers[] = {
    {{kRSNOUI, 0}, "Use group cipher suite"},
    {{kRSNOUI, 1}, "WEP-40"},
    {{kRSNOUI, 2}, "TKIP"},
    {{kRSNOUI, 4}, "CCMP-128"},
    {{kRSNOUI, 5}, "WEP-104"},
    {{kRSNOUI, 6}, "BIP-CMAC-128"},
    {{kRSNOUI, 7}, "Group addressed traffic not allowed"},
    {{kRSNOUI, 8}, "GCMP-128"},
    {{kRSNOUI, 9}, "GCMP-256"},
    {{kRSNOUI, 10}, "CCMP-256"},
    {{kRSNOUI, 11}, "BIP-GMAC-128"},
    {{kRSNOUI, 12}, "BIP-GMAC-256"},
    {{kRSNOUI, 13}, "BIP-CMAC-256"},
    {{kWPAOUI, 0}, "Use group cipher suite"},
    {{kWPAOUI, 1}, "WEP-40"},
    {{kWPAOUI, 2}, "TKIP"},
    {{kWPAOUI, 4}, "CCMP-128"},
    {{kWPAOUI, 5}, "WEP-104"},
    {{kWapiOUI, 1}, "WPI-SMS4"},
};

// Table 9-151; the Wi-Fi Alliance's OSEN (Hotspot 2.0) and DPP (Easy Connect); WAPI.
constexpr SuiteName kAkms[] = {
    {{kRSNOUI, 1}, "802.1X"},
    {{kRSNOUI, 2}, "PSK"},
    {{kRSNOUI, 3}, "FT-802.1X"},
    {{kRSNOUI, 4}, "FT-PSK"},
    {{kRSNOUI, 5}, "802.1X-SHA256"},
    {{kRSNOUI, 6}, "PSK-SHA256"},
    {{kRSNOUI, 7}, "TDLS"},
    {{kRSNOUI, 8}, "SAE"},
    {{kRSNOUI, 9}, "FT-SAE"},
    {{kRSNOUI, 10}, "AP-PEER-KEY"},
    {{kRSNOUI, 11}, "SUITE-B"},
    {{kRSNOUI, 12}, "SUITE-B-192"},
    {{kRSNOUI, 13}, "FT-802.1X-SHA384"},
    {{kRSNOUI, 14}, "FILS-SHA256"},
    {{kRSNOUI, 15}, "FILS-SHA384"},
    {{kRSNOUI, 16}, "FT-FILS-SHA256"},
    {{kRSNOUI, 17}, "FT-FILS-SHA384"},
    {{kRSNOUI, 18}, "OWE"},
    {{kRSNOUI, 19}, "FT-PSK-SHA384"},
    {{kRSNOUI, 20}, "PSK-SHA384"},
    {{kRSNOUI, 21}, "PASN"},
    {{kRSNOUI, 22}, "FT-802.1X-SHA384-UNRESTRICTED"},
    {{kRSNOUI, 23}, "802.1X-SHA384"},
    {{kRSNOUI, 24}, "SAE-EXT-KEY"},
    {{kRSNOUI, 25}, "FT-SAE-EXT-KEY"},
    {{kWPAOUI, 1}, "802.1X"},
    {{kWPAOUI, 2}, "PSK"},
    {{kWfaOUI, 1}, "OSEN"},
    {{kWfaOUI, 2}, "DPP"},
    {{kCckmOUI, 0}, "CCKM"},
    {{kWapiOUI, 1}, "WAI-CERTIFICATE"},
    {{kWapiOUI, 2}, "WAI-PSK"},
};

std::string_view nameIn(std::span<const SuiteName> names, const Suite& suite) {
    for (const SuiteName& row : names) {
        if (row.suite == suite) return row.name;
    }
    return {};
}

std::string textOf(std::string_view name, const Suite& suite) {
    if (!name.empty()) return std::string(name);
    std::string text;
    for (const std::uint8_t octet : suite.oui) {
        if (!text.empty()) text += '-';
        appendHexOctet(text, octet, kUpperHexDigits);
    }
    return text + ':' + std::to_string(suite.type);
}

}  // namespace

std::string_view cipherName(const Suite& suite) {
    return nameIn(kCiphers, suite);
}

std::string_view akmName(const Suite& suite) {
    return nameIn(kAkms, suite);
}

std::string cipherText(const Suite& suite) {
    return textOf(cipherName(suite), suite);
}

std::string akmText(const Suite& suite) {
    return textOf(akmName(suite), suite);
}

}  // namespace halvane::air
