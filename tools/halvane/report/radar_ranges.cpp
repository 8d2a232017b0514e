#include "tools/halvane/report/radar_ranges.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <set>

#include "halvane/regulatory/channel.h"
#include "halvane/regulatory/country.h"
#include "halvane/regulatory/sku.h"

namespace halvane::tool {

namespace {

constexpr double kHalfChannel = 10;  // MHz

using Frequencies = std::set<std::int64_t>;

void addRadarChannels(const HalvaneCountry& country, Frequencies& frequencies) {
    for (const HalvaneChannel& channel : country.channels()) {
        if (channel.isRadarProne()) frequencies.insert(channel.channelFrequency());
    }
}

std::vector<FrequencyRange> joined(const Frequencies& frequencies) {
    std::vector<FrequencyRange> ranges;
    for (const std::int64_t frequency : frequencies) {
        const auto center = static_cast<double>(frequency);
        if (!ranges.empty() && ranges.back().high >= center - kHalfChannel) {
            ranges.back().high = center + kHalfChannel;
        } else {
            ranges.push_back({center - kHalfChannel, center + kHalfChannel});
        }
    }
    return ranges;
}

}  // namespace

std::string commonCountry(const ReportData& data) {
    std::map<std::string, std::size_t> counts;
    for (const ReportNetwork& network : data.networks) {
        const auto& country = network.network.profile.country;
        if (country) ++counts[country->value.code];
    }
    const auto most =
        std::ranges::max_element(counts, {}, [](const auto& entry) { return entry.second; });
    return most == counts.end() ? std::string() : most->first;
}

std::vector<FrequencyRange> radarRanges(const std::string& country) {
    Frequencies ofAll;
    Frequencies ofOne;
    for (const HalvaneSKU& region : HalvaneSKU::createDefaultSKUList()) {
        for (const HalvaneCountry& known : region.countries()) {
            addRadarChannels(known, ofAll);
            if (known.isoName() == country) addRadarChannels(known, ofOne);
        }
    }
    return joined(ofOne.empty() ? ofAll : ofOne);
}

}  // namespace halvane::tool
