// Channels, countries and SKUs, as a program or a property list adds them.
#include <benchmark/benchmark.h>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/number.h"
#include "halvane/regulatory/channel.h"
#include "halvane/regulatory/country.h"
#include "halvane/regulatory/sku.h"

#include "bench/growth.h"

using halvane::HalvaneChannel;
using halvane::HalvaneCountry;
using halvane::HalvaneSKU;
using halvane::Number;
using halvane::PropertyListDictionary;

namespace bench {

namespace {

constexpr unsigned kFirstOwnChannel = 10000;

std::string countryName(std::size_t index) {
    return "Country " + std::to_string(index);
}

std::string isoName(std::size_t index) {
    return std::to_string(index) + "I";
}

// A SKU of n countries, in descending order.
HalvaneSKU skuOf(std::size_t count) {
    auto sku = HalvaneSKU::initWithFriendlyName_withShortName("SKU", "SKU");
    for (std::size_t i = 0; i < count; ++i) {
        sku.countries().push_back(HalvaneCountry::initWithFriendlyName_withISOName_withISOCode(
            countryName(count - i - 1), isoName(count - i - 1), Number(i)));
    }
    return sku;
}

// Adds n channels to the map of the process, including those of smaller sizes.
std::size_t fillMap(std::size_t count) {
    static std::size_t filled = 0;
    HalvaneChannel::initChannelMapTable();
    for (; filled < count; ++filled) {
        const auto channel = static_cast<unsigned>(kFirstOwnChannel + filled);
        HalvaneChannel::addChannelToMapTable_frequency_extensionChannel(channel, 5 * channel,
                                                                        channel);
    }
    return count;
}

template <typename LookUp>
void addLookUps(const char* row, LookUp lookUp) {
    addGrowth(row, 4096, fillMap, [lookUp](std::size_t count) {
        bool all = true;
        for (std::size_t i = 0; i < count; ++i) {
            all &= lookUp(static_cast<unsigned>(kFirstOwnChannel + i));
        }
        return all;
    });
}

void addMapRows() {
    addLookUps("channel map: look up all by frequency", [](unsigned channel) {
        return HalvaneChannel::channelNumberForFrequency(5 * channel) == channel;
    });
    addLookUps("channel map: look up all by number", [](unsigned channel) {
        return HalvaneChannel::channelFrequencyForNumber(channel) == 5 * channel;
    });
    addLookUps("channel map: look up all extensions", [](unsigned channel) {
        return HalvaneChannel::channelExtensionForNumber(channel) == channel;
    });
    // Runs once per size, because the map keeps its channels. These channels come after all others.
    benchmark::RegisterBenchmark(
        "channel map: add",
        [](benchmark::State& state) {
            HalvaneChannel::initChannelMapTable();
            const auto count = static_cast<unsigned>(state.range(0));
            for (auto _ : state) {
                for (unsigned i = 0; i < count; ++i) {
                    HalvaneChannel::addChannelToMapTable_frequency_extensionChannel(
                        100000 + count + i, 500000 + count + i, 0);
                }
            }
            state.SetComplexityN(state.range(0));
        })
        ->RangeMultiplier(kStep)
        ->Range(65536 / kSpan, 65536)
        ->Iterations(1)
        ->Complexity();
}

void addSKURows() {
    addGrowth("SKU: find all by friendly name", 4096, skuOf, [](HalvaneSKU& sku) {
        std::size_t found = 0;
        for (std::size_t i = 0; i < sku.countries().size(); ++i) {
            found += sku.findCountryByFriendlyName(countryName(i)) != nullptr ? 1 : 0;
        }
        return found == sku.countries().size();
    });
    addGrowth("SKU: find all by ISO name", 4096, skuOf, [](HalvaneSKU& sku) {
        std::size_t found = 0;
        for (std::size_t i = 0; i < sku.countries().size(); ++i) {
            found += sku.findCountryByISOName(isoName(i)) != nullptr ? 1 : 0;
        }
        return found == sku.countries().size();
    });
    addGrowth("SKU: remove all by friendly name", 4096, skuOf, [](const HalvaneSKU& sku) {
        auto rest = sku;
        for (std::size_t i = 0; i < sku.countries().size(); ++i) {
            if (!rest.removeCountryByFriendlyName(countryName(i))) return false;
        }
        return rest.countries().empty();
    });
    addGrowth("SKU: sort countries", 16384, skuOf, [](const HalvaneSKU& sku) {
        auto sorted = sku;
        sorted.sortCountriesByFriendlyName();
        return sorted.countries().size() == sku.countries().size();
    });
    addGrowth(
        "SKU: skeleton", 16384, [](std::size_t n) { return skuOf(n).skeletonRepresentation(); },
        [](const PropertyListDictionary& skeleton) {
            return !HalvaneSKU::initWithSkeletonRepresentation(skeleton).countries().empty();
        });
    addGrowth(
        "country: sort channels", 16384,
        [](std::size_t n) {
            auto country =
                HalvaneCountry::initWithFriendlyName_withISOName_withISOCode("A", "A", Number(1));
            for (std::size_t i = 0; i < n; ++i) {
                country.channels().push_back(
                    HalvaneChannel::initWithChannel_withFrequency_isRadarProne(
                        Number(n - i), Number(n - i), false));
            }
            return country;
        },
        [](const HalvaneCountry& country) {
            auto sorted = country;
            sorted.sortChannelsByFrequency();
            return sorted.channels().front().channelNumber() == 1;
        });
}

}  // namespace

void addRegulatoryRows() {
    addMapRows();
    addSKURows();
}

}  // namespace bench
