// The default SKUs with their countries and channels, beside the same data in plain structs.
#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "halvane/regulatory/channel.h"
#include "halvane/regulatory/country.h"
#include "halvane/regulatory/sku.h"
#include "halvane/regulatory/sku_table_internal.h"

#include "bench/allocation_count.h"

namespace {

using halvane::HalvaneChannel;
using halvane::HalvaneCountry;
using halvane::HalvaneSKU;

struct PlainChannel {
    std::int64_t number;
    std::int64_t frequency;
    bool isRadarProne, isDisabled, supports40MHz, supports80MHz;
};

struct PlainCountry {
    std::string friendlyName;
    std::string isoName;
    std::int64_t isoCode;
    std::vector<PlainChannel> channels;
};

struct PlainSKU {
    std::string friendlyName;
    std::string shortName;
    std::vector<PlainCountry> countries;
};

// The channels of every country.
std::vector<PlainChannel> plainChannels() {
    auto country = HalvaneCountry::initWithFriendlyName_withISOName_withISOCode("", "", 0);
    country.createDefaultChannelList();
    std::vector<PlainChannel> channels;
    for (const HalvaneChannel& channel : country.channels()) {
        channels.push_back({channel.channelNumber(), channel.channelFrequency(),
                            channel.isRadarProne(), channel.isDisabled(), channel.supports40MHz(),
                            channel.supports80MHz()});
    }
    return channels;
}

std::vector<PlainSKU> plainList(const std::vector<PlainChannel>& channels) {
    std::vector<PlainSKU> list;
    for (const auto& row : halvane::kDefaultSKUs) {
        PlainSKU sku{row.friendlyName, row.shortName, {}};
        for (const auto& country : halvane::defaultCountriesOf(row.sku)) {
            sku.countries.push_back({country.friendlyName, country.isoName, country.isoCode, {}});
            for (const PlainChannel& channel : channels) {
                sku.countries.back().channels.push_back(channel);
            }
        }
        list.push_back(std::move(sku));
    }
    return list;
}

void require(bool holds) {
    if (!holds) std::abort();
}

void countAllocations(benchmark::State& state, std::uint64_t before) {
    state.counters["allocations"] = benchmark::Counter(
        static_cast<double>(bench::allocationCount() - before), benchmark::Counter::kAvgIterations);
}

void defaultSKUsHalvane(benchmark::State& state) {
    const auto list = HalvaneSKU::createDefaultSKUList();
    require(list.size() == 7 && list[6].countries().size() == 167);
    require(list[6].countries()[166].channels().size() == 42);
    const auto before = bench::allocationCount();
    for (auto _ : state) benchmark::DoNotOptimize(HalvaneSKU::createDefaultSKUList());
    countAllocations(state, before);
}

void defaultSKUsPlain(benchmark::State& state) {
    const auto channels = plainChannels();
    const auto list = plainList(channels);
    require(list.size() == 7 && list[6].countries.size() == 167);
    require(list[6].countries[166].channels.size() == 42);
    const auto before = bench::allocationCount();
    for (auto _ : state) benchmark::DoNotOptimize(plainList(channels));
    countAllocations(state, before);
}

BENCHMARK(defaultSKUsHalvane);
BENCHMARK(defaultSKUsPlain);

}  // namespace

BENCHMARK_MAIN();
