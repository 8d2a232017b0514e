#include "halvane/air/security.h"

#include <array>
#include <cstddef>

#include "halvane/air/offered_akms_internal.h"
#include "halvane/air/suite_types_internal.h"
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

struct TypesOfKind {
    SuiteTypes types;
    Kind kind;
};
constexpr TypesOfKind kTypesOfKinds[] = {
    {kPskAkms, kPsk},
    {kSaeAkms, kSae},
    {kPlain8021XAkms, k8021X},
    {kEither8021XAkms, k8021XEither},
    {kSha256Of8021XAkms, k8021XSha256},
    {k192BitAkms, kSuiteB192},
    {kOweAkms, kOwe},
};

// The suites of others than the standard.
struct AkmKind {
    Suite suite;
    Kind kind;
};

constexpr OUI kCckmOUI = {0x00, 0x40, 0x96};

constexpr AkmKind kAkmKinds[] = {
    {{kWPAOUI, 1}, k8021X}, {{kWPAOUI, 2}, kPsk},    {{kWfaOUI, 1}, kOsen},
    {{kWfaOUI, 2}, kDpp},   {{kCckmOUI, 0}, k8021X},
};

unsigned kindsOf(const SuiteSet& akms) {
    unsigned kinds = 0;
    for (const TypesOfKind& row : kTypesOfKinds) {
        if (row.types.isAnyIn(akms)) kinds |= row.kind;
    }
    for (const AkmKind& row : kAkmKinds) {
        if (akms.contains(row.suite)) kinds |= row.kind;
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

constexpr std::array<std::string_view, 3> kPmfNames = {"none", "capable", "required"};

}  // namespace

std::string_view securityName(Security security) {
    return kNames[static_cast<std::size_t>(security)];
}

std::string_view pmfName(Pmf pmf) {
    return kPmfNames[static_cast<std::size_t>(pmf)];
}

Pmf pmfOf(const Rsn& rsn) {
    if (!rsn.isPmfCapable()) return Pmf::None;
    return rsn.isPmfRequired() ? Pmf::Required : Pmf::Capable;
}

std::optional<SuiteSet> akmsOf(const Rsn& rsn) {
    return offeredAkms(rsn, {kRSNOUI, 1});
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
