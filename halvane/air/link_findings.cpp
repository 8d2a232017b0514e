#include <algorithm>

#include "halvane/air/profile_findings_internal.h"

namespace halvane::air {

namespace {

using Kind = FindingKind;

void findInMld(const ProfileParts& parts, FindingCollector& findings) {
    const auto& mld = parts.profile.mld;
    if (!mld) return;
    const auto hasMldAddress = [&](const MldLink& link) { return link.address == mld->address; };
    findings.addIf(std::ranges::any_of(mld->links, hasMldAddress), Kind::MldAddressIsBssid,
                   mld->sources);
}

void findInProfiles(const ProfileParts& parts, FindingCollector& findings) {
    const Sources source = {findings.sourceOf(ElementId::MultipleBssid)};
    const auto lacksName = [](const NontransmittedBss& bss) { return !bss.profile.ssid; };
    findings.addIf(std::ranges::any_of(parts.profile.nontransmitted, lacksName),
                   Kind::ProfileSsidMissing, source);
}

}  // namespace

void findInLinks(const ProfileParts& parts, FindingCollector& findings) {
    findInMld(parts, findings);
    findInProfiles(parts, findings);
    const auto& he = parts.operation.he;
    findings.addIf(he && he->isBssColorDisabled(), Kind::ColorDisabled,
                   {findings.sourceOf(ElementId::HeOperation)});
}

}  // namespace halvane::air
