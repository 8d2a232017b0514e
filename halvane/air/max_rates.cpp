#include "halvane/air/max_rates.h"

#include <algorithm>
#include <cstddef>

#include "halvane/air/eht_mcs_sets.h"
#include "halvane/air/element_id.h"
#include "halvane/air/ht_mcs_set.h"
#include "halvane/air/max_rates_internal.h"
#include "halvane/air/mcs_map.h"
#include "halvane/air/source.h"

namespace halvane::air {

namespace {

constexpr int kMostStreams = 8;

// The highest rate of 1 to 8 streams. `highestMcs` gives that of a number of streams, or nothing.
template <typename HighestMcs>
std::optional<PhyRate> bestRate(PhyRateInputs inputs, HighestMcs highestMcs) {
    std::optional<PhyRate> best;
    for (int streams = 1; streams <= kMostStreams; ++streams) {
        const std::optional<int> mcs = highestMcs(streams);
        if (!mcs) continue;
        inputs.streams = streams;
        inputs.mcs = *mcs;
        const auto rate = highestPhyRate(inputs);
        if (rate && (!best || rate->hundredKbit > best->hundredKbit)) best = rate;
    }
    return best;
}

std::optional<Derived<PhyRate>> derived(const std::optional<PhyRate>& rate, Rule rule,
                                        const Sources& sources) {
    if (!rate) return std::nullopt;
    return Derived<PhyRate>{*rate, rule, sources};
}

// --- HT ---

std::optional<PhyRate> htRate(const HtCapabilities& ht, int width) {
    const bool is40 = width >= 40 && ht.information.is40MhzSupported();
    const bool isShortGuard = is40 ? ht.information.isShortGuardInterval40Supported()
                                   : ht.information.isShortGuardInterval20Supported();
    return bestRate({Phy::Ht, is40 ? 40 : 20, 1, 0, isShortGuard},
                    [&](int streams) -> std::optional<int> {
                        constexpr int kMcsPerStream = 8;
                        if (streams > HtMcsSet::kMaxStreams) return std::nullopt;
                        for (int mcs = kMcsPerStream - 1; mcs >= 0; --mcs) {
                            if (ht.rxMcs.supports(kMcsPerStream * (streams - 1) + mcs)) return mcs;
                        }
                        return std::nullopt;
                    });
}

// --- VHT ---

// The short guard interval of 20 and 40 MHz is told by HT Capabilities.
bool hasShortGuard(const CapabilityElements& capabilities, int width) {
    const auto& vht = *capabilities.vht;
    if (width == 160) return vht.has(VhtCapability::ShortGi160);
    if (width == 80) return vht.has(VhtCapability::ShortGi80);
    if (!capabilities.ht) return false;
    const auto& ht = capabilities.ht->information;
    return width == 40 ? ht.isShortGuardInterval40Supported()
                       : ht.isShortGuardInterval20Supported();
}

// The streams at 160 MHz. The BSS shows that the radio has its width, even if the Supported Channel
// Width Set denies it.
int vhtStreamsAt160(const VhtCapabilities& vht, int streams) {
    const bool has160 = vht.streamsAt160(kMostStreams) > 0;
    return has160 ? vht.streamsAt160(streams) : streams;
}

std::optional<PhyRate> vhtRate(const CapabilityElements& capabilities, int bssWidth) {
    const auto& vht = *capabilities.vht;
    const int width = std::min(bssWidth, 160);
    std::optional<PhyRate> best;
    for (int streams = 1; streams <= kMostStreams; ++streams) {
        const auto mcs = vht.rxMcs.highestMcs(streams);
        if (!mcs) continue;
        const int usable = width == 160 ? vhtStreamsAt160(vht, streams) : streams;
        const auto rate =
            highestPhyRate({Phy::Vht, width, usable, *mcs, hasShortGuard(capabilities, width)});
        if (rate && (!best || rate->hundredKbit > best->hundredKbit)) best = rate;
    }
    return best;
}

// --- HE ---

// The BSS shows that the radio has its width; above 80 MHz a map of its own tells the streams.
int heWidth(const HeCapabilities& he, int width) {
    const bool has160 = he.at160 || he.at80Plus80;
    return std::min(width, has160 ? 160 : 80);
}

const HeMcsMap& heMap(const HeCapabilities& he, int width) {
    if (width < 160) return he.upTo80.rx;
    return he.at160 ? he.at160->rx : he.at80Plus80->rx;
}

std::optional<PhyRate> heRate(const HeCapabilities& he, int bssWidth) {
    const int width = heWidth(he, bssWidth);
    const HeMcsMap& map = heMap(he, width);
    return bestRate({.phy = Phy::He, .width = width},
                    [&](int streams) { return map.highestMcs(streams); });
}

// --- EHT ---

struct EhtMap {
    int width;
    EhtMcsMap<3> map;
};

// The map of the widest channel up to that of the BSS.
std::optional<EhtMap> ehtMap(const EhtMcsSets& sets, int width) {
    if (width >= 320 && sets.at320) return EhtMap{320, *sets.at320};
    if (width >= 160 && sets.at160) return EhtMap{160, *sets.at160};
    if (sets.upTo80) return EhtMap{std::min(width, 80), *sets.upTo80};
    return std::nullopt;
}

std::optional<PhyRate> ehtRate(const CapabilityElements& capabilities, int width) {
    const auto sets = capabilities.eht->mcsSets(capabilities.he->phy);
    if (!sets) return std::nullopt;
    const auto map = ehtMap(*sets, width);
    if (!map) return std::nullopt;
    return bestRate({.phy = Phy::Eht, .width = map->width},
                    [&](int streams) { return map->map.highestRxMcs(streams); });
}

}  // namespace

MaxRates maxRatesOf(const ElementIndex& index, const CapabilityElements& capabilities, int width) {
    const auto sourceOf = [&](ElementId id) { return index.sourceOf(id); };
    const Source ht = sourceOf(ElementId::HtCapabilities);
    const Source vht = sourceOf(ElementId::VhtCapabilities);
    const Source he = sourceOf(ElementId::HeCapabilities);
    MaxRates rates;
    if (capabilities.ht) rates.ht = derived(htRate(*capabilities.ht, width), Rule::RateHt, {ht});
    if (capabilities.vht) {
        const Sources sources = capabilities.ht ? Sources{vht, ht} : Sources{vht};
        rates.vht = derived(vhtRate(capabilities, width), Rule::RateVht, sources);
    }
    if (!capabilities.he) return rates;
    rates.he = derived(heRate(*capabilities.he, width), Rule::RateHe, {he});
    if (capabilities.eht) {
        rates.eht = derived(ehtRate(capabilities, width), Rule::RateEht,
                            {sourceOf(ElementId::EhtCapabilities), he});
    }
    return rates;
}

}  // namespace halvane::air
