#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "halvane/air/bit_octets.h"
#include "halvane/air/channel.h"
#include "halvane/air/element_id.h"
#include "halvane/air/element_range.h"
#include "halvane/air/profile_findings_internal.h"
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

// --- 6 GHz and WPS ---

// Open, WEP, WPA, TKIP, pre-shared keys of WPA2, SAE without hash-to-element and unprotected
// management frames are banned from 6 GHz.
bool isBannedAt6Ghz(const ProfileParts& parts) {
    const auto& security = parts.profile.security;
    const auto& offer = parts.security.offer;
    if (parts.security.mayLack(offer.rsn) && offer.wpa == Reading::Missing) return false;
    return offer.rsn != Reading::Whole || offer.wpa != Reading::Missing ||
           kPskAkms.isAnyIn(offer.rsnAkms) || allowsTkip(parts.security.rsn, false) ||
           isWeakGroup(security.groupCipher) || parts.security.offersSaeWithoutH2e() ||
           *security.pmf != Pmf::Required;
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
    findInWps(parts, findings);
    findInSixGhz(parts, findings);
}

}  // namespace halvane::air
