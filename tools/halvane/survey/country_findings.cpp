#include "tools/halvane/survey/country_findings.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "halvane/air/finding.h"
#include "halvane/air/source.h"

namespace halvane::tool {

namespace {

using air::Finding;
using air::FindingKind;

// Empty if the network tells none, or one that is no code of a country. "XX" is that of none.
std::string countryOf(const Network& network) {
    const auto& country = network.profile.country;
    if (!country || (*country)->code == "XX") return {};
    const auto isInvalid = [](const Finding& finding) {
        return finding.kind == FindingKind::CountryInvalid;
    };
    if (std::ranges::any_of(network.profile.findings, isInvalid)) return {};
    return std::string((*country)->code);
}

// The country of more than half of the networks that tell one; empty if there is none.
std::string countryOfMost(std::span<const Network> networks) {
    std::map<std::string, std::size_t> counts;
    std::size_t all = 0;
    for (const Network& network : networks) {
        const std::string country = countryOf(network);
        if (country.empty()) continue;
        ++counts[country];
        ++all;
    }
    for (const auto& [country, count] : counts) {
        if (2 * count > all) return country;
    }
    return {};
}

// Behind the findings that are as bad, as the profile orders them.
void add(FindingKind kind, const air::Sources& sources, std::vector<Finding>& findings) {
    const auto isBefore = [kind](const Finding& other) {
        const auto severity = air::findingInfo(kind).severity;
        const auto ofOther = other.info().severity;
        return ofOther > severity || (ofOther == severity && other.kind <= kind);
    };
    findings.insert(std::ranges::find_if_not(findings, isBefore), {kind, sources});
}

}  // namespace

void findOtherCountries(std::span<Network> networks) {
    const std::string most = countryOfMost(networks);
    if (most.empty()) return;
    for (Network& network : networks) {
        const std::string country = countryOf(network);
        if (country.empty() || country == most) continue;
        add(FindingKind::CountryDiffers, network.profile.country->sources,
            network.profile.findings);
    }
}

}  // namespace halvane::tool
