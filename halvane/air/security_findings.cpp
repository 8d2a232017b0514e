#include <algorithm>
#include <optional>

#include "halvane/air/profile_findings_internal.h"
#include "halvane/air/suite_types_internal.h"

namespace halvane::air {

namespace {

using Kind = FindingKind;

bool isAnyOf(const SuiteSet& set, SuiteTypes types) {
    return types.isAnyIn(set);
}

// The same cipher in the element of either kind.
bool hasCipher(const SuiteSet& set, std::uint8_t type) {
    return set.contains({kRSNOUI, type}) || set.contains({kWPAOUI, type});
}

bool isCipher(const std::optional<Suite>& suite, std::uint8_t type) {
    return suite && (*suite == Suite{kRSNOUI, type} || *suite == Suite{kWPAOUI, type});
}

constexpr std::uint8_t kWep40 = 1;
constexpr std::uint8_t kTkip = 2;
constexpr std::uint8_t kWep104 = 5;

bool isSae(const SuiteSet& akms) {
    return isAnyOf(akms, {8, 9, 24, 25});
}
bool isPsk(const SuiteSet& akms) {
    return isAnyOf(akms, {2, 4, 6, 19, 20});
}
bool isEnterprise(const SuiteSet& akms) {
    return isAnyOf(akms, {1, 3, 5, 11, 12, 13, 22, 23});
}
bool isFt(const SuiteSet& akms) {
    return isAnyOf(akms, {3, 4, 9, 13, 16, 17, 19, 22, 25});
}

// --- What the name of the security says ---

void findInName(const ProfileParts& parts, FindingCollector& findings) {
    const Sources rsn = {findings.sourceOf(ElementId::Rsn)};
    const Sources wpa = {findings.sourceOf(VendorKind::Wpa)};
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
                                {findings.sourceOf(VendorKind::OweTransition)});
        case Security::Broken:
            return findings.add(Kind::SecurityBroken, parts.index.has(ElementId::Rsn) ? rsn : wpa);
        default:
            return;
    }
}

// --- Elements that cannot be used ---

void findInElements(const ProfileParts& parts, FindingCollector& findings) {
    const auto& rsn = parts.security.rsn;
    const auto& wpa = parts.security.wpa;
    const auto& offer = parts.security.offer;
    const Sources source = {findings.sourceOf(ElementId::Rsn)};
    findings.addIf(parts.index.has(ElementId::Rsn) && !rsn, Kind::SuiteCountPastEnd, source);
    findings.addIf(parts.index.has(VendorKind::Wpa) && !wpa, Kind::SuiteCountPastEnd,
                   {findings.sourceOf(VendorKind::Wpa)});
    findings.addIf(rsn && rsn->version != 1, Kind::RsnVersion, source);
    const bool isProtected = offer.rsn != Reading::Missing || offer.wpa != Reading::Missing;
    findings.addIf(isProtected && !offer.isPrivacy, Kind::PrivacyBitDiffers,
                   {{Origin::Capabilities},
                    offer.rsn != Reading::Missing ? findings.sourceOf(ElementId::Rsn)
                                                  : findings.sourceOf(VendorKind::Wpa)});
}

// --- Ciphers ---

void findInCiphers(const ProfileParts& parts, FindingCollector& findings) {
    const auto& security = parts.profile.security;
    const bool hasRsn = parts.security.rsn.has_value();
    const Sources source = {hasRsn ? findings.sourceOf(ElementId::Rsn)
                                   : findings.sourceOf(VendorKind::Wpa)};
    const bool isTkipAlone = security.pairwiseCiphers.size() == 1;
    findings.addIf(hasCipher(security.pairwiseCiphers, kTkip) && !isTkipAlone, Kind::TkipAllowed,
                   source);
    const auto& group = security.groupCipher;
    findings.addIf(isCipher(group, kTkip) || isCipher(group, kWep40) || isCipher(group, kWep104),
                   Kind::TkipGroup, source);
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

void findInKeyManagement(const ProfileParts& parts, FindingCollector& findings) {
    const auto& offer = parts.security.offer;
    const auto& akms = offer.rsnAkms;
    const Sources rsn = {findings.sourceOf(ElementId::Rsn)};
    const bool hasUnknown = std::ranges::any_of(
        parts.profile.security.akms, [](const Suite& akm) { return akmName(akm).empty(); });
    findings.addIf(hasUnknown, Kind::AkmUnknown, rsn);
    findings.addIf(isPsk(akms) && isEnterprise(akms), Kind::PersonalAndEnterprise, rsn);
    findings.addIf(isAnyOf(akms, {12, 13}) &&
                       akms.size() > (isAnyOf(akms, {12}) && isAnyOf(akms, {13}) ? 2u : 1u),
                   Kind::Suite192Mixed, rsn);
    const bool hasBoth = offer.rsn == Reading::Whole && offer.wpa == Reading::Whole;
    if (hasBoth) {
        const Sources both = {rsn[0], findings.sourceOf(VendorKind::Wpa)};
        findings.add(Kind::WpaBesideWpa2, both);
        const SuiteSet wpa = kindsOf(offer.wpaAkms);
        findings.addIf(isPsk(akms) != isPsk(wpa) || isEnterprise(akms) != isEnterprise(wpa),
                       Kind::RsnWpaDiffer, both);
    }
    const bool hasOverride =
        parts.index.has(VendorKind::RsnOverride) || parts.index.has(VendorKind::RsnOverride2);
    findings.addIf(
        hasOverride, Kind::RsnOverride,
        {findings.sourceOf(parts.index.has(VendorKind::RsnOverride) ? VendorKind::RsnOverride
                                                                    : VendorKind::RsnOverride2)});
}

void findInFastTransition(const ProfileParts& parts, FindingCollector& findings) {
    const bool hasDomain = parts.index.has(ElementId::MobilityDomain);
    const bool hasFt = isFt(parts.security.offer.rsnAkms);
    findings.addIf(hasFt && !hasDomain, Kind::FtWithoutMobilityDomain,
                   {findings.sourceOf(ElementId::Rsn)});
    findings.addIf(hasDomain && !hasFt, Kind::MobilityDomainWithoutFt,
                   {findings.sourceOf(ElementId::MobilityDomain)});
}

// --- Management frame protection ---

void findInPmf(const ProfileParts& parts, FindingCollector& findings) {
    const auto& rsn = parts.security.rsn;
    const auto& offer = parts.security.offer;
    if (!rsn || offer.rsn != Reading::Whole) return;
    const Sources source = {findings.sourceOf(ElementId::Rsn)};
    const auto& akms = offer.rsnAkms;
    const bool isModern = isSae(akms) || isAnyOf(akms, {18});
    const bool isModernAlone = isModern && !isPsk(akms) && !isEnterprise(akms);
    if (rsn->isPmfRequired() && !rsn->isPmfCapable()) {
        return findings.add(Kind::PmfRequiredNotCapable, source);
    }
    if (offer.pmf == Pmf::None) {
        return findings.add(isModern ? Kind::PmfMissingWithSae : Kind::PmfOff, source);
    }
    findings.addIf(isModernAlone && offer.pmf == Pmf::Capable, Kind::PmfNotRequired, source);
}

void findInSae(const ProfileParts& parts, FindingCollector& findings) {
    if (!isSae(parts.security.offer.rsnAkms)) return;
    const auto& rsnx = parts.security.rsnx;
    const bool hasH2e = rsnx && rsnx->has(RsnxCapability::SaeHashToElement);
    findings.addIf(!hasH2e, Kind::SaeWithoutH2e,
                   {findings.sourceOf(rsnx ? ElementId::Rsnx : ElementId::Rsn)});
}

// Open, WEP, WPA, TKIP, pre-shared keys of WPA2 and unprotected management frames are banned from
// 6 GHz.
void findInSixGhz(const ProfileParts& parts, FindingCollector& findings) {
    const auto& band = parts.profile.channel.band;
    if (!band || **band != Band::Ghz6) return;
    const auto name = *parts.profile.security.name;
    const bool isAllowed = name == Security::Wpa3Personal || name == Security::Wpa3Enterprise ||
                           name == Security::Wpa3Enterprise192 || name == Security::EnhancedOpen;
    const bool isRequired = *parts.profile.security.pmf == Pmf::Required;
    findings.addIf(!isAllowed || !isRequired, Kind::SixGhzSecurity,
                   {parts.index.has(ElementId::Rsn) ? findings.sourceOf(ElementId::Rsn)
                                                    : Source{Origin::Capabilities}});
}

// WPS hands out what the network is protected with.
void findInWps(const ProfileParts& parts, FindingCollector& findings) {
    const auto& wps = parts.security.wps;
    if (!wps) return;
    const Sources source = {findings.sourceOf(VendorKind::Wps)};
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
    findInFastTransition(parts, findings);
    findInPmf(parts, findings);
    findInSae(parts, findings);
    findInWps(parts, findings);
    findInSixGhz(parts, findings);
}

}  // namespace halvane::air
