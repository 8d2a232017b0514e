#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "halvane/air/bit_octets.h"
#include "halvane/air/channel.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_range.h"
#include "halvane/air/profile_findings_internal.h"
#include "halvane/air/rsn.h"
#include "halvane/air/rsnx.h"
#include "halvane/air/security.h"
#include "halvane/air/source.h"
#include "halvane/air/suite.h"
#include "halvane/air/suite_types_internal.h"
#include "halvane/air/wpa.h"
#include "halvane/air/wps_summary.h"
#include "halvane/base/oui.h"

namespace halvane::air {

namespace {

using Kind = FindingKind;

constexpr Suite rsnSuite(std::uint8_t type) {
    return {kRSNOUI, type};
}

bool isAnyOf(const SuiteSet& set, SuiteTypes types) {
    return types.isAnyIn(set);
}

// The same cipher in the element of either kind.
bool isCipher(const std::optional<Suite>& suite, std::uint8_t type) {
    return suite && (*suite == Suite{kRSNOUI, type} || *suite == Suite{kWPAOUI, type});
}

constexpr std::uint8_t kWep40 = 1;
constexpr std::uint8_t kTkip = 2;
constexpr std::uint8_t kWep104 = 5;

bool isWeakGroup(const std::optional<Suite>& suite) {
    return isCipher(suite, kTkip) || isCipher(suite, kWep40) || isCipher(suite, kWep104);
}

bool isSae(const SuiteSet& akms) {
    return isAnyOf(akms, {8, 9, 24, 25});
}
bool isOwe(const SuiteSet& akms) {
    return isAnyOf(akms, {18});
}
bool isPsk(const SuiteSet& akms) {
    return isAnyOf(akms, {2, 4, 6, 19, 20});
}
bool is192Bit(const SuiteSet& akms) {
    return isAnyOf(akms, {12, 13});
}
bool isOtherEnterprise(const SuiteSet& akms) {
    return isAnyOf(akms, {1, 3, 5, 11, 22, 23});
}
bool isEnterprise(const SuiteSet& akms) {
    return is192Bit(akms) || isOtherEnterprise(akms);
}
bool isFt(const SuiteSet& akms) {
    return isAnyOf(akms, {3, 4, 9, 13, 16, 17, 19, 22, 25});
}

// --- What the name of the security says ---

void findInName(const ProfileParts& parts, FindingCollector& findings) {
    const Sources rsn = findings.sourcesOf(ElementId::Rsn);
    const Sources wpa = findings.sourcesOf(VendorKind::Wpa);
    const Sources privacy = {{Origin::Capabilities}};
    switch (*parts.profile.security.name) {
        case Security::Open:
            return findings.add(Kind::OpenNetwork, privacy);
        case Security::Wep:
            return findings.add(Kind::WepOnly, privacy);
        case Security::WpaPersonal:
        case Security::WpaEnterprise:
            return findings.add(Kind::WpaOnly, wpa);
        case Security::Wpa2Wpa3Personal:
        case Security::Wpa2Wpa3Enterprise:
            return findings.add(Kind::Wpa3Transition, rsn);
        case Security::EnhancedOpenTransition:
            return findings.add(Kind::OweTransitionOpen,
                                findings.sourcesOf(VendorKind::OweTransition));
        case Security::Broken:
            return findings.add(Kind::SecurityBroken, parts.index.has(ElementId::Rsn) ? rsn : wpa);
        default:
            return;
    }
}

// --- Elements that cannot be used ---

// Whether the body of a damaged element reaches to a count, after the version and the group cipher.
bool hasCount(Octets body) {
    constexpr std::size_t kBeforeSuites = 2 + 4 + 2;
    return body.size() >= kBeforeSuites;
}

void findInCounts(const ProfileParts& parts, FindingCollector& findings) {
    Sources sources;
    const auto* const rsn = parts.index.find(ElementId::Rsn);
    if (rsn != nullptr && !parts.security.rsn && hasCount(rsn->body)) {
        sources = findings.sourcesOf(ElementId::Rsn);
    }
    const auto* const wpa = parts.index.find(VendorKind::Wpa);
    if (wpa != nullptr && !parts.security.wpa && hasCount(ElementIndex::vendorBody(*wpa))) {
        for (const Source& source : findings.sourcesOf(VendorKind::Wpa)) sources.push_back(source);
    }
    findings.addIf(!sources.empty(), Kind::SuiteCountPastEnd, sources);
}

void findInElements(const ProfileParts& parts, FindingCollector& findings) {
    findInCounts(parts, findings);
    const auto& rsn = parts.security.rsn;
    const auto& offer = parts.security.offer;
    findings.addIf(rsn && rsn->version != 1, Kind::RsnVersion, findings.sourcesOf(ElementId::Rsn));
    const bool isProtected = offer.rsn != Reading::Missing || offer.wpa != Reading::Missing;
    Sources sources = {{Origin::Capabilities}};
    for (const Source& source : findings.sourcesOf(ElementId::Rsn, VendorKind::Wpa)) {
        sources.push_back(source);
    }
    findings.addIf(isProtected && !offer.isPrivacy, Kind::PrivacyBitDiffers, sources);
}

// --- Ciphers ---

// Whether the element allows TKIP; `isDefault` tells of one that lists no cipher.
template <typename Element>
bool allowsTkip(const std::optional<Element>& element, bool isDefault) {
    if (!element) return false;
    if (!element->pairwise) return isDefault;
    return std::ranges::any_of(*element->pairwise,
                               [](const Suite& suite) { return isCipher(suite, kTkip); });
}

// A network of WPA with TKIP alone has a finding of its own.
void findInCiphers(const ProfileParts& parts, FindingCollector& findings) {
    const auto& rsn = parts.security.rsn;
    const auto& wpa = parts.security.wpa;
    const auto& offer = parts.security.offer;
    const bool isWholeRsn = offer.rsn == Reading::Whole;
    const bool isWholeWpa = offer.wpa == Reading::Whole;
    const bool inRsn = isWholeRsn && allowsTkip(rsn, false);
    const bool inWpa = isWholeWpa && allowsTkip(wpa, true);
    const auto& security = parts.profile.security;
    if (inRsn || (inWpa && (isWholeRsn || security.pairwiseCiphers.size() > 1))) {
        findings.add(Kind::TkipAllowed, inRsn && inWpa
                                            ? findings.sourcesOf(ElementId::Rsn, VendorKind::Wpa)
                                        : inRsn ? findings.sourcesOf(ElementId::Rsn)
                                                : findings.sourcesOf(VendorKind::Wpa));
    }
    findings.addIf(
        isWeakGroup(security.groupCipher), Kind::TkipGroup,
        isWholeRsn ? findings.sourcesOf(ElementId::Rsn) : findings.sourcesOf(VendorKind::Wpa));
}

// --- Key management ---

SuiteSet kindsOf(const SuiteSet& akms) {
    SuiteSet types;
    for (Suite akm : akms) {
        akm.oui = kRSNOUI;  // WPA numbers its suites alike
        types.push_back(akm);
    }
    return types;
}

// The elements that offer the key management of RSN.
Sources rsnSources(const FindingCollector& findings) {
    return findings.sourcesOf(ElementId::Rsn, VendorKind::RsnOverride, VendorKind::RsnOverride2);
}

bool hasUnknownAkm(const SuiteSet& akms) {
    return std::ranges::any_of(akms, [](const Suite& akm) { return akmName(akm).empty(); });
}

void findInKeyManagement(const ProfileParts& parts, FindingCollector& findings) {
    const auto& offer = parts.security.offer;
    const auto& akms = offer.rsnAkms;
    const Sources rsn = rsnSources(findings);
    if (hasUnknownAkm(akms)) {
        findings.add(Kind::AkmUnknown, rsn);
    } else if (hasUnknownAkm(offer.wpaAkms)) {
        findings.add(Kind::AkmUnknown, findings.sourcesOf(VendorKind::Wpa));
    }
    findings.addIf((isPsk(akms) || isSae(akms)) && isEnterprise(akms), Kind::PersonalAndEnterprise,
                   rsn);
    findings.addIf(
        is192Bit(akms) &&
            std::ranges::any_of(
                akms, [](const Suite& akm) { return akm != rsnSuite(12) && akm != rsnSuite(13); }),
        Kind::Suite192Mixed, rsn);
    findings.addIf(
        parts.index.has(VendorKind::RsnOverride) || parts.index.has(VendorKind::RsnOverride2),
        Kind::RsnOverride, findings.sourcesOf(VendorKind::RsnOverride, VendorKind::RsnOverride2));
}

void findInRsnAndWpa(const ProfileParts& parts, FindingCollector& findings) {
    const auto& offer = parts.security.offer;
    if (offer.rsn != Reading::Whole || offer.wpa != Reading::Whole) return;
    const Sources both = findings.sourcesOf(ElementId::Rsn, VendorKind::Wpa);
    findings.add(Kind::WpaBesideWpa2, both);
    const auto& rsn = offer.rsnAkms;
    const SuiteSet wpa = kindsOf(offer.wpaAkms);
    findings.addIf(isPsk(rsn) != isPsk(wpa) || isEnterprise(rsn) != isEnterprise(wpa),
                   Kind::RsnWpaDiffer, both);
}

void findInFastTransition(const ProfileParts& parts, FindingCollector& findings) {
    const bool hasDomain = parts.index.has(ElementId::MobilityDomain);
    const bool hasFt = isFt(parts.security.offer.rsnAkms);
    findings.addIf(hasFt && !hasDomain, Kind::FtWithoutMobilityDomain, rsnSources(findings));
    findings.addIf(hasDomain && !hasFt, Kind::MobilityDomainWithoutFt,
                   findings.sourcesOf(ElementId::MobilityDomain));
}

// --- Management frame protection ---

// What is wrong in one element: its key management beside its own capabilities. The peers of a mesh
// authenticate by SAE, protected management frames or not.
std::optional<Kind> pmfFaultOf(const Rsn& rsn, bool isMesh) {
    const auto akms = akmsOf(rsn);
    if (!akms) return std::nullopt;
    const bool isModern = !isMesh && (isSae(*akms) || isOwe(*akms) || is192Bit(*akms));
    const Pmf pmf = pmfOf(rsn);
    if (rsn.isPmfRequired() && !rsn.isPmfCapable()) return Kind::PmfRequiredNotCapable;
    if (pmf == Pmf::None) return isModern ? Kind::PmfMissingWithSae : Kind::PmfOff;
    const bool isModernAlone = isModern && !isPsk(*akms) && !isOtherEnterprise(*akms);
    return isModernAlone && pmf == Pmf::Capable ? std::optional(Kind::PmfNotRequired)
                                                : std::nullopt;
}

// A fault of several elements is one finding.
void findInPmf(const ProfileParts& parts, FindingCollector& findings) {
    struct Judged {
        std::optional<Kind> fault;
        Source source;
    };
    const auto& security = parts.security;
    const bool isMesh = parts.index.has(ElementId::MeshId);
    const auto judge = [&](const std::optional<Rsn>& rsn, auto key) {
        return Judged{rsn ? pmfFaultOf(*rsn, isMesh) : std::nullopt, parts.index.sourceOf(key)};
    };
    const Judged all[] = {judge(security.rsn, ElementId::Rsn),
                          judge(security.rsnOverride, VendorKind::RsnOverride),
                          judge(security.rsnOverride2, VendorKind::RsnOverride2)};
    for (const Kind fault : {Kind::PmfRequiredNotCapable, Kind::PmfMissingWithSae, Kind::PmfOff,
                             Kind::PmfNotRequired}) {
        Sources sources;
        for (const Judged& element : all) {
            if (element.fault == fault) sources.push_back(element.source);
        }
        findings.addIf(!sources.empty(), fault, sources);
    }
}

bool lacksHashToElement(const ProfileParts& parts) {
    return isSae(parts.security.offer.rsnAkms) &&
           !parts.security.has(RsnxCapability::SaeHashToElement);
}

void findInSae(const ProfileParts& parts, FindingCollector& findings) {
    const Sources sources = findings.sourcesOf(ElementId::Rsnx, VendorKind::RsnxOverride);
    findings.addIf(lacksHashToElement(parts), Kind::SaeWithoutH2e,
                   sources.empty() ? rsnSources(findings) : sources);
}

// Open, WEP, WPA, TKIP, pre-shared keys of WPA2, SAE without hash-to-element and unprotected
// management frames are banned from 6 GHz.
bool isBannedAt6Ghz(const ProfileParts& parts) {
    const auto& security = parts.profile.security;
    const auto& offer = parts.security.offer;
    return offer.rsn != Reading::Whole || offer.wpa != Reading::Missing || isPsk(offer.rsnAkms) ||
           allowsTkip(parts.security.rsn, false) || isWeakGroup(security.groupCipher) ||
           lacksHashToElement(parts) || *security.pmf != Pmf::Required;
}

void findInSixGhz(const ProfileParts& parts, FindingCollector& findings) {
    const auto& band = parts.profile.channel.band;
    if (!band || **band != Band::Ghz6 || !isBannedAt6Ghz(parts)) return;
    Sources sources = findings.sourcesOf(ElementId::Rsn, VendorKind::Wpa);
    if (sources.empty()) sources.push_back({Origin::Capabilities});
    findings.add(Kind::SixGhzSecurity, sources);
}

// WPS hands out what the network is protected with.
void findInWps(const ProfileParts& parts, FindingCollector& findings) {
    const auto& wps = parts.security.wps;
    if (!wps) return;
    const Sources source = findings.sourcesOf(VendorKind::Wps);
    const bool isOpen = *parts.profile.security.name == Security::Open;
    findings.addIf(isOpen, Kind::OpenWithWps, source);
    findings.addIf(!isOpen && !wps->isSetupLocked(), Kind::WpsOn, source);
    findings.addIf(wps->isRegistrarSelected(), Kind::WpsUnlockedPin, source);
}

}  // namespace

void findInSecurity(const ProfileParts& parts, FindingCollector& findings) {
    findInName(parts, findings);
    findInElements(parts, findings);
    findInCiphers(parts, findings);
    findInKeyManagement(parts, findings);
    findInRsnAndWpa(parts, findings);
    findInFastTransition(parts, findings);
    findInPmf(parts, findings);
    findInSae(parts, findings);
    findInWps(parts, findings);
    findInSixGhz(parts, findings);
}

}  // namespace halvane::air
