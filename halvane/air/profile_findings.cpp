#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

#include "halvane/air/channel.h"
#include "halvane/air/channel_use.h"
#include "halvane/air/element_id.h"
#include "halvane/air/extended_supported_rates.h"
#include "halvane/air/profile_findings_internal.h"
#include "halvane/air/rate_octet.h"
#include "halvane/air/source.h"
#include "halvane/air/supported_rates.h"

namespace halvane::air {

namespace {

using Kind = FindingKind;

// --- Rates and air time ---

// The basic rates of one element.
struct BasicRates {
    bool isAny = false;
    bool isSlow = false;  // 1 or 2 Mbit/s
};

template <typename Element>
BasicRates basicRatesIn(const std::optional<Element>& element) {
    BasicRates basic;
    if (!element) return basic;
    constexpr int kSlow = 4;  // 2 Mbit/s, in units of 0.5
    for (const RateOctet rate : element->rates) {
        if (!rate.isBasic() || !rate.rate()) continue;
        basic.isAny = true;
        basic.isSlow = basic.isSlow || *rate.rate() <= kSlow;
    }
    return basic;
}

void findBasicRates(const ProfileParts& parts, FindingCollector& findings) {
    const auto rates = parts.index.decode<SupportedRates>();
    if (!rates) return;
    const BasicRates first = basicRatesIn(rates);
    const BasicRates further = basicRatesIn(parts.index.decode<ExtendedSupportedRates>());
    const bool isFurtherCutOff =
        parts.profile.isCut && !parts.index.has(ElementId::ExtendedSupportedRates);
    findings.addIf(
        !first.isAny && !further.isAny && !isFurtherCutOff, Kind::NoBasicRates,
        findings.sourcesOf(ElementId::SupportedRates, ElementId::ExtendedSupportedRates));
    findings.addIf(first.isSlow || further.isSlow, Kind::SlowBasicRates,
                   findings.sourcesOf(first.isSlow ? ElementId::SupportedRates
                                                   : ElementId::ExtendedSupportedRates));
}

// A mesh has no stations that could lose it, and takes 1000 TU unless told otherwise.
void findInterval(const ProfileParts& parts, FindingCollector& findings) {
    constexpr int kShort = 50;  // TU
    constexpr int kLong = 500;
    const int interval = parts.fixed.beaconInterval;
    findings.addIf(interval > 0 && interval < kShort, Kind::ShortBeaconInterval,
                   {{Origin::BeaconInterval}});
    findings.addIf(interval > kLong && parts.lacks(ElementId::MeshId), Kind::LongBeaconInterval,
                   {{Origin::BeaconInterval}});
}

// --- Country ---

bool overlaps(int low, int high, int from, int to) {
    return low < to && from < high;
}

// Radars are looked for from channel 52 to 64 and from 100 to 144.
bool isOnDfs(const ChannelUse& channel) {
    if (!channel.band || **channel.band != Band::Ghz5) return false;
    const auto& span = *channel.span;
    const int width = span.center2 ? span.width / 2 : span.width;
    for (const auto& center : {span.center1, span.center2}) {
        if (!center) continue;
        const int low = *center - width / 2;
        const int high = *center + width / 2;
        if (overlaps(low, high, 5250, 5330) || overlaps(low, high, 5490, 5730)) return true;
    }
    return false;
}

bool isCountryCode(std::string_view code) {
    const auto isLetter = [](char c) { return c >= 'A' && c <= 'Z'; };
    return code.size() == 2 && std::ranges::all_of(code, isLetter);
}

void findInCountry(const ProfileParts& parts, FindingCollector& findings) {
    const auto& country = parts.profile.country;
    if (country) {
        return findings.addIf(!isCountryCode((*country)->code), Kind::CountryInvalid,
                              country->sources);
    }
    const auto& channel = parts.profile.channel;
    if (!parts.lacks(ElementId::Country) || !isOnDfs(channel)) return;
    Sources sources = channel.primaryChannel ? channel.primaryChannel->sources : Sources();
    for (const Source& source : channel.span.sources) {
        if (std::ranges::find(sources, source) == sources.end()) sources.push_back(source);
    }
    findings.add(Kind::CountryMissingOnDfs, sources);
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
    findInterval(parts, findings);
    constexpr int kHighLoad = 153;  // 60 % of 255
    const auto& load = parts.profile.load;
    findings.addIf(load && (*load)->utilization > kHighLoad, Kind::LoadHigh,
                   findings.sourcesOf(ElementId::BssLoad));
    constexpr std::size_t kManyNames = 4;
    findings.addIf(parts.profile.nontransmitted.size() + 1 >= kManyNames, Kind::ManyNames,
                   findings.sourcesOf(ElementId::MultipleBssid));
}

void findInNames(const ProfileParts& parts, FindingCollector& findings) {
    const Sources source = findings.sourcesOf(ElementId::Ssid);
    // A mesh has its name elsewhere. The encrypted half of Enhanced Open is joined by the open one.
    const bool isNameHere =
        parts.lacks(ElementId::MeshId) && parts.lacks(VendorKind::OweTransition);
    if (!parts.index.has(ElementId::Ssid)) {
        findings.addIf(parts.lacks(ElementId::Ssid), Kind::SsidMissing);
    } else if (!parts.profile.ssid) {
        findings.add(Kind::SsidTooLong, source);
    } else {
        findings.addIf(parts.profile.isHidden && isNameHere, Kind::HiddenName, source);
    }
    findInCountry(parts, findings);
}

}  // namespace halvane::air
