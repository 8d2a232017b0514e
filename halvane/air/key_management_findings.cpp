#include <algorithm>
#include <optional>

#include "halvane/air/element_id.h"
#include "halvane/air/profile_findings_internal.h"
#include "halvane/air/rsn.h"
#include "halvane/air/security.h"
#include "halvane/air/source.h"
#include "halvane/air/suite.h"
#include "halvane/air/suite_types_internal.h"
#include "halvane/base/oui.h"

namespace halvane::air {

namespace {

using Kind = FindingKind;

// --- Suites ---

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

void findInSuites(const ProfileParts& parts, FindingCollector& findings) {
    const auto& offer = parts.security.offer;
    const auto& akms = offer.rsnAkms;
    const Sources rsn = rsnSources(findings);
    if (hasUnknownAkm(akms)) {
        findings.add(Kind::AkmUnknown, rsn);
    } else if (hasUnknownAkm(offer.wpaAkms)) {
        findings.add(Kind::AkmUnknown, findings.sourcesOf(VendorKind::Wpa));
    }
    findings.addIf(
        (kPskAkms.isAnyIn(akms) || kSaeAkms.isAnyIn(akms)) && kEnterpriseAkms.isAnyIn(akms),
        Kind::PersonalAndEnterprise, rsn);
    findings.addIf(
        k192BitAkms.isAnyIn(akms) &&
            std::ranges::any_of(akms, [](const Suite& akm) { return !k192BitAkms.has(akm); }),
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
    findings.addIf(kPskAkms.isAnyIn(rsn) != kPskAkms.isAnyIn(wpa) ||
                       kEnterpriseAkms.isAnyIn(rsn) != kEnterpriseAkms.isAnyIn(wpa),
                   Kind::RsnWpaDiffer, both);
}

void findInFastTransition(const ProfileParts& parts, FindingCollector& findings) {
    const bool hasDomain = parts.index.has(ElementId::MobilityDomain);
    const bool hasFt = kFtAkms.isAnyIn(parts.security.offer.rsnAkms);
    findings.addIf(hasFt && parts.lacks(ElementId::MobilityDomain), Kind::FtWithoutMobilityDomain,
                   rsnSources(findings));
    findings.addIf(hasDomain && !hasFt && !parts.profile.isCut, Kind::MobilityDomainWithoutFt,
                   findings.sourcesOf(ElementId::MobilityDomain));
}

// --- Management frame protection ---

// What is wrong in one element: its key management beside its own capabilities. The peers of a mesh
// authenticate by SAE, protected management frames or not.
std::optional<Kind> pmfFaultOf(const Rsn& rsn, bool isMesh) {
    const auto akms = akmsOf(rsn);
    if (!akms) return std::nullopt;
    const bool isModern = !isMesh && (kSaeAkms.isAnyIn(*akms) || kOweAkms.isAnyIn(*akms) ||
                                      k192BitAkms.isAnyIn(*akms));
    const Pmf pmf = pmfOf(rsn);
    if (rsn.isPmfRequired() && !rsn.isPmfCapable()) return Kind::PmfRequiredNotCapable;
    if (pmf == Pmf::None) return isModern ? Kind::PmfMissingWithSae : Kind::PmfOff;
    const bool isModernAlone =
        isModern && !kPskAkms.isAnyIn(*akms) && !kWeaker8021XAkms.isAnyIn(*akms);
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
    const bool isMesh = parts.mayBeMesh();
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

// --- SAE ---

void findInSae(const ProfileParts& parts, FindingCollector& findings) {
    const Sources sources = findings.sourcesOf(ElementId::Rsnx, VendorKind::RsnxOverride);
    findings.addIf(parts.security.offersSaeWithoutH2e(), Kind::SaeWithoutH2e,
                   sources.empty() ? rsnSources(findings) : sources);
}

}  // namespace

void findInKeyManagement(const ProfileParts& parts, FindingCollector& findings) {
    findInSuites(parts, findings);
    findInRsnAndWpa(parts, findings);
    findInFastTransition(parts, findings);
    findInPmf(parts, findings);
    findInSae(parts, findings);
}

}  // namespace halvane::air
