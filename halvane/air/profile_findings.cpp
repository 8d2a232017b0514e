#include <algorithm>

#include "halvane/air/extended_supported_rates.h"
#include "halvane/air/profile_findings_internal.h"
#include "halvane/air/supported_rates.h"

namespace halvane::air {

namespace {

using Kind = FindingKind;

// --- Rates and air time ---

template <typename Element>
void countRates(const std::optional<Element>& element, int& basic, int& slowBasic) {
    if (!element) return;
    constexpr int kSlow = 4;  // 2 Mbit/s, in units of 0.5
    for (const RateOctet rate : element->rates) {
        if (!rate.isBasic() || !rate.rate()) continue;
        ++basic;
        if (*rate.rate() <= kSlow) ++slowBasic;
    }
}

void findBasicRates(const ProfileParts& parts, FindingCollector& findings) {
    const auto rates = parts.index.decode<SupportedRates>();
    if (!rates) return;
    int basic = 0;
    int slowBasic = 0;
    countRates(rates, basic, slowBasic);
    countRates(parts.index.decode<ExtendedSupportedRates>(), basic, slowBasic);
    const Sources source = {findings.sourceOf(ElementId::SupportedRates)};
    findings.addIf(basic == 0, Kind::NoBasicRates, source);
    findings.addIf(slowBasic > 0, Kind::SlowBasicRates, source);
}

void findInterval(const FixedFields& fixed, FindingCollector& findings) {
    constexpr int kShort = 50;  // TU
    constexpr int kLong = 500;
    const int interval = fixed.beaconInterval;
    findings.addIf(interval > 0 && interval < kShort, Kind::ShortBeaconInterval,
                   {{Origin::BeaconInterval}});
    findings.addIf(interval > kLong, Kind::LongBeaconInterval, {{Origin::BeaconInterval}});
}

}  // namespace

void FindingCollector::add(FindingKind kind, const Sources& sources) {
    const auto isWorse = [](FindingKind a, FindingKind b) {
        const Severity ofA = findingInfo(a).severity;
        const Severity ofB = findingInfo(b).severity;
        return ofA != ofB ? ofA > ofB : a < b;
    };
    const auto place = std::ranges::upper_bound(findings_, kind, isWorse, &Finding::kind);
    findings_.insert(place, {kind, sources});
}

void findInRates(const ProfileParts& parts, FindingCollector& findings) {
    findBasicRates(parts, findings);
    findInterval(parts.fixed, findings);
    constexpr int kHighLoad = 153;  // 60 % of 255
    const auto& load = parts.profile.load;
    findings.addIf(load && (*load)->utilization > kHighLoad, Kind::LoadHigh,
                   {findings.sourceOf(ElementId::BssLoad)});
    constexpr std::size_t kManyNames = 4;
    findings.addIf(parts.profile.nontransmitted.size() + 1 >= kManyNames, Kind::ManyNames,
                   {findings.sourceOf(ElementId::MultipleBssid)});
}

void findInNames(const ProfileParts& parts, FindingCollector& findings) {
    const Source source = findings.sourceOf(ElementId::Ssid);
    const bool isMesh = parts.index.has(ElementId::MeshId);
    if (!parts.index.has(ElementId::Ssid)) {
        findings.add(Kind::SsidMissing);
    } else if (!parts.profile.ssid) {
        findings.add(Kind::SsidTooLong, {source});
    } else {
        findings.addIf(parts.profile.isHidden && !isMesh, Kind::HiddenName, {source});
    }
    const auto& country = parts.profile.country;
    if (country) {
        const auto isLetter = [](char c) { return c >= 'A' && c <= 'Z'; };
        const bool isCode =
            (*country)->code.size() == 2 && std::ranges::all_of((*country)->code, isLetter);
        findings.addIf(!isCode, Kind::CountryInvalid, country->sources);
    }
}

}  // namespace halvane::air
