#include <algorithm>
#include <cstdint>
#include <iterator>

#include "halvane/air/element_id.h"
#include "halvane/air/element_range.h"
#include "halvane/air/he_operation.h"
#include "halvane/air/inheritance.h"
#include "halvane/air/multi_link.h"
#include "halvane/air/profile_findings_internal.h"
#include "halvane/air/profile_links_internal.h"
#include "halvane/air/security_elements_internal.h"

namespace halvane::air {

namespace {

using Kind = FindingKind;

// --- Security of links ---

template <typename Suites>
bool areEqualSets(const Suites& one, const Suites& other) {
    const auto isIn = [](const Suites& set) {
        return [&set](const Suite& suite) { return set.contains(suite); };
    };
    return std::ranges::all_of(one, isIn(other)) && std::ranges::all_of(other, isIn(one));
}

// The pairwise ciphers of RSN; of none if they are left out or unreadable.
Rsn::Suites pairwiseIn(const SecurityElements& elements) {
    return elements.rsn ? elements.rsn->pairwise.value_or(Rsn::Suites()) : Rsn::Suites();
}

// A station has one pairwise key with a multi-link device, for all links. Group keys are a link's
// own, and so is the cipher for them.
bool isSameSecurity(const SecurityElements& one, const SecurityElements& other) {
    return securityOf(one.offer) == securityOf(other.offer) && one.offer.pmf == other.offer.pmf &&
           areEqualSets(one.offer.rsnAkms, other.offer.rsnAkms) &&
           areEqualSets(one.offer.wpaAkms, other.offer.wpaAkms) &&
           areEqualSets(pairwiseIn(one), pairwiseIn(other));
}

// Whether the profile of a link names an element that security is derived from, or may take one
// away.
bool tellsOfSecurity(const PerStaProfile& link) {
    constexpr ElementId kIds[] = {ElementId::Rsn, ElementId::Vendor, ElementId::BssAcAccessDelay,
                                  ElementId::NonInheritance};
    for (const Element& element : ElementRange(link.elements())) {
        if (std::ranges::find(kIds, element.id) != std::end(kIds)) return true;
    }
    return false;
}

// What the profile of a link does not name, the link has from the sender.
bool hasOtherSecurity(const ProfileParts& parts, const PerStaProfile& link) {
    const auto capabilities = link.capabilities();
    if (!link.isComplete() || !capabilities) return false;
    const bool isPrivacy = capabilities->hasPrivacy();
    if (isPrivacy == parts.security.offer.isPrivacy && !tellsOfSecurity(link)) return false;
    const BssElements elements = elementsOfLink(parts.index.elements(), link);
    return !isSameSecurity(parts.security,
                           SecurityElements(ElementIndex(elements.elements), isPrivacy));
}

// The first profile of a link counts.
void findInLinkSecurity(const ProfileParts& parts, FindingCollector& findings) {
    std::uint16_t seen = 0;  // bit k: link k
    for (const MultiLinkSubelement& subelement : parts.multiLink->element.subelements) {
        const auto& link = subelement.link;
        if (!link) continue;
        const unsigned bit = 1u << link->linkId();
        if ((seen & bit) == 0 && hasOtherSecurity(parts, *link)) {
            return findings.add(Kind::MldSecurityDiffers, parts.profile.mld->sources);
        }
        seen = static_cast<std::uint16_t>(seen | bit);
    }
}

// --- Addresses ---

void findInMld(const ProfileParts& parts, FindingCollector& findings) {
    const auto& mld = parts.profile.mld;
    if (!mld || !parts.multiLink) return;
    // A link has from the sender what it does not name itself.
    if (!parts.profile.isCut) findInLinkSecurity(parts, findings);
    const auto hasMldAddress = [&](const MldLink& link) { return link.address == mld->address; };
    findings.addIf(std::ranges::any_of(mld->links, hasMldAddress), Kind::MldAddressIsBssid,
                   mld->sources);
}

// Whether the profile that stands last may go on in an element that was cut off.
bool mayProfileGoOn(const ProfileParts& parts) {
    const auto elements = parts.index.elements();
    if (!parts.profile.isCut || elements.empty()) return false;
    const ElementId next = parts.trailing.id().value_or(ElementId::MultipleBssid);
    return elements.back().id == ElementId::MultipleBssid && next == ElementId::MultipleBssid;
}

void findInProfiles(const ProfileParts& parts, FindingCollector& findings) {
    if (mayProfileGoOn(parts)) return;
    const Sources source = findings.sourcesOf(ElementId::MultipleBssid);
    const auto lacksName = [](const NontransmittedBss& bss) { return !bss.profile.ssid; };
    findings.addIf(std::ranges::any_of(parts.profile.nontransmitted, lacksName),
                   Kind::ProfileSsidMissing, source);
    if (!parts.faultyProfiles) return;
    findings.add(Kind::ProfileIndexInvalid, {{Origin::Element, ElementId::MultipleBssid,
                                              static_cast<std::uint32_t>(*parts.faultyProfiles)}});
}

}  // namespace

void findInLinks(const ProfileParts& parts, FindingCollector& findings) {
    findInMld(parts, findings);
    findInProfiles(parts, findings);
    const auto& he = parts.operation.he;
    findings.addIf(he && he->isBssColorDisabled(), Kind::ColorDisabled,
                   findings.sourcesOf(ElementId::HeOperation));
}

}  // namespace halvane::air
