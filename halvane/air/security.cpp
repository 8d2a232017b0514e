#include "halvane/air/security.h"

#include <array>
#include <cstddef>

#include "halvane/base/oui.h"

namespace halvane::air {

namespace {

constexpr std::array<std::string_view, 20> kNames = {
    "Open",
    "WEP",
    "WPA-Personal",
    "WPA/WPA2-Personal",
    "WPA2-Personal",
    "WPA2/WPA3-Personal",
    "WPA3-Personal",
    "WPA-Enterprise",
    "WPA/WPA2-Enterprise",
    "WPA2-Enterprise",
    "WPA2/WPA3-Enterprise",
    "WPA3-Enterprise",
    "WPA3-Enterprise 192-bit",
    "Enhanced Open",
    "Enhanced Open transition",
    "OSEN",
    "DPP",
    "WAPI",
    "Unknown",
    "Broken",
};

// The kinds of key management, as bits of a set.
enum Kind : unsigned {
    kPsk = 1u << 0,          // a password, as WPA2 uses it
    kSae = 1u << 1,          // a password, as WPA3 uses it
    k8021X = 1u << 2,        // WPA2
    k8021XEither = 1u << 3,  // beside the AKMs of WPA2 or of WPA3: FT, FILS
    k8021XSha256 = 1u << 4,  // WPA3 if management frames are protected
    kSuiteB192 = 1u << 5,
    kOwe = 1u << 6,
    kOsen = 1u << 7,
    kDpp = 1u << 8,
};

struct AkmKind {
    Suite suite;
    Kind kind;
};

constexpr OUI kWfaOUI = {0x50, 0x6F, 0x9A};
constexpr OUI kCckmOUI = {0x00, 0x40, 0x96};

constexpr AkmKind kAkmKinds[] = {
    {{kRSNOUI, 1}, k8021X},        {{kRSNOUI, 2}, kPsk},          {{kRSNOUI, 3}, k8021XEither},
    {{kRSNOUI, 4}, kPsk},          {{kRSNOUI, 5}, k8021XSha256},  {{kRSNOUI, 6}, kPsk},
    {{kRSNOUI, 8}, kSae},          {{kRSNOUI, 9}, kSae},          {{kRSNOUI, 11}, k8021XSha256},
    {{kRSNOUI, 12}, kSuiteB192},   {{kRSNOUI, 13}, kSuiteB192},   {{kRSNOUI, 14}, k8021XEither},
    {{kRSNOUI, 15}, k8021XEither}, {{kRSNOUI, 16}, k8021XEither}, {{kRSNOUI, 17}, k8021XEither},
    {{kRSNOUI, 18}, kOwe},         {{kRSNOUI, 19}, kPsk},         {{kRSNOUI, 20}, kPsk},
    {{kRSNOUI, 22}, k8021XSha256}, {{kRSNOUI, 23}, k8021XSha256}, {{kRSNOUI, 24}, kSae},
    {{kRSNOUI, 25}, kSae},         {{kWPAOUI, 1}, k8021X},        {{kWPAOUI, 2}, kPsk},
    {{kWfaOUI, 1}, kOsen},         {{kWfaOUI, 2}, kDpp},          {{kCckmOUI, 0}, k8021X},
};

unsigned kindsOf(const SuiteSet& akms) {
    unsigned kinds = 0;
    for (const Suite& akm : akms) {
        for (const AkmKind& row : kAkmKinds) {
            if (row.suite == akm) kinds |= row.kind;
        }
    }
    return kinds;
}

Security enterpriseOf(unsigned kinds, Pmf pmf) {
    if (kinds & kSuiteB192) return Security::Wpa3Enterprise192;
    if (!(kinds & k8021XSha256)) return Security::Wpa2Enterprise;
    if (kinds & k8021X) return Security::Wpa2Wpa3Enterprise;
    return pmf == Pmf::Required ? Security::Wpa3Enterprise : Security::Wpa2Enterprise;
}

// Of the RSN element alone.
Security rsnSecurityOf(unsigned kinds, Pmf pmf) {
    if ((kinds & kPsk) && (kinds & kSae)) return Security::Wpa2Wpa3Personal;
    if (kinds & kPsk) return Security::Wpa2Personal;
    if (kinds & kSae) return Security::Wpa3Personal;
    if (kinds & (k8021X | k8021XEither | k8021XSha256 | kSuiteB192))
        return enterpriseOf(kinds, pmf);
    if (kinds & kOwe) return Security::EnhancedOpen;
    if (kinds & kOsen) return Security::Osen;
    return kinds & kDpp ? Security::Dpp : Security::Unknown;
}

Security wpaSecurityOf(unsigned kinds) {
    if (kinds & kPsk) return Security::WpaPersonal;
    return kinds & k8021X ? Security::WpaEnterprise : Security::Unknown;
}

// WPA beside WPA2 has names of its own; beside WPA3 the newer name stands.
Security withWpa(Security rsn, Security wpa) {
    if (rsn == Security::Wpa2Personal && wpa == Security::WpaPersonal) {
        return Security::WpaWpa2Personal;
    }
    if (rsn == Security::Wpa2Enterprise && wpa == Security::WpaEnterprise) {
        return Security::WpaWpa2Enterprise;
    }
    return rsn;
}

Security withoutRsn(const SecurityOffer& offer) {
    if (offer.hasOsen) return Security::Osen;
    if (offer.hasWapi) return Security::Wapi;
    if (offer.isPrivacy) return Security::Wep;
    return offer.hasOweTransition ? Security::EnhancedOpenTransition : Security::Open;
}

}  // namespace

std::string_view securityName(Security security) {
    return kNames[static_cast<std::size_t>(security)];
}

std::string_view pmfName(Pmf pmf) {
    constexpr std::array<std::string_view, 3> kPmfNames = {"none", "capable", "required"};
    return kPmfNames[static_cast<std::size_t>(pmf)];
}

Pmf pmfOf(const Rsn& rsn) {
    if (!rsn.isPmfCapable()) return Pmf::None;
    return rsn.isPmfRequired() ? Pmf::Required : Pmf::Capable;
}

std::optional<SuiteSet> akmsOf(const Rsn& rsn) {
    constexpr std::uint16_t kVersion = 1;
    const bool hasEmptyList =
        (rsn.pairwise && rsn.pairwise->empty()) || (rsn.akms && rsn.akms->empty());
    if (rsn.version != kVersion || hasEmptyList) return std::nullopt;
    if (!rsn.akms) return SuiteSet{{kRSNOUI, 1}};
    SuiteSet akms;
    for (const Suite& akm : *rsn.akms) {
        if (!akms.contains(akm)) akms.push_back(akm);
    }
    return akms;
}

Security securityOf(const SecurityOffer& offer) {
    if (offer.rsn == Reading::Broken) return Security::Broken;
    if (offer.rsn == Reading::Missing) {
        if (offer.wpa == Reading::Broken) return Security::Broken;
        if (offer.wpa == Reading::Missing) return withoutRsn(offer);
        return wpaSecurityOf(kindsOf(offer.wpaAkms));
    }
    const Security rsn = rsnSecurityOf(kindsOf(offer.rsnAkms), offer.pmf);
    if (offer.wpa != Reading::Whole) return rsn;
    return withWpa(rsn, wpaSecurityOf(kindsOf(offer.wpaAkms)));
}

}  // namespace halvane::air
