// A 200-byte beacon decoded in full - walk, elements, greatest rate, label - beside libtins, which
// parses the same bytes and looks up the fields that it is asked for.
#include <benchmark/benchmark.h>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <malloc.h>
#include <tins/dot11/dot11_beacon.h>
#include <tins/rsn_information.h>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"
#include "halvane/ie/mac.h"

#include "bench/allocation_count.h"
#include "bench/beacon.h"

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

void countAllocations(benchmark::State& state, std::uint64_t before) {
    state.counters["allocations"] = benchmark::Counter(
        static_cast<double>(bench::allocationCount() - before), benchmark::Counter::kAvgIterations);
}

void decodeWithHalvane(benchmark::State& state) {
    const auto record = bench::decodedBeacon();
    require(record.SSID() == halvane::ByteBuffer::fromText("neighbour-12"));
    require(record.supportedRates()->size() == 12 && record.rsn()->allowKeyManagementPSK());
    require(record.maxPHYRate() == halvane::Number(300));
    require(record.securityFriendlyName() == "WPA Personal");
    const auto before = bench::allocationCount();
    for (auto _ : state) benchmark::DoNotOptimize(bench::decodedBeacon());
    countAllocations(state, before);
}

// The same, and what is made when it is asked for.
void decodeAndAskHalvane(benchmark::State& state) {
    const auto before = bench::allocationCount();
    for (auto _ : state) {
        const auto record = bench::decodedBeacon();
        benchmark::DoNotOptimize(record.SSID());
        benchmark::DoNotOptimize(record.supportedRates());
        benchmark::DoNotOptimize(record.rsn());
        benchmark::DoNotOptimize(record.countryIE()->channelTuples());
    }
    countAllocations(state, before);
}

void decodeWithLibtins(benchmark::State& state) {
    const Tins::Dot11Beacon check(bench::kBeacon, sizeof(bench::kBeacon));
    require(check.ssid() == "neighbour-12" && check.supported_rates().size() == 8);
    require(check.extended_supported_rates().size() == 4);
    require(check.rsn_information().akm_cyphers().size() == 1);
    const auto before = bench::allocationCount();
    for (auto _ : state) {
        const Tins::Dot11Beacon beacon(bench::kBeacon, sizeof(bench::kBeacon));
        benchmark::DoNotOptimize(beacon.ssid());
        benchmark::DoNotOptimize(beacon.supported_rates());
        benchmark::DoNotOptimize(beacon.extended_supported_rates());
        benchmark::DoNotOptimize(beacon.rsn_information());
    }
    countAllocations(state, before);
}

// The same, and the other fields that a record of ours has.
void decodeAndAskLibtins(benchmark::State& state) {
    const auto before = bench::allocationCount();
    for (auto _ : state) {
        const Tins::Dot11Beacon beacon(bench::kBeacon, sizeof(bench::kBeacon));
        benchmark::DoNotOptimize(beacon.addr3());
        benchmark::DoNotOptimize(beacon.interval());
        benchmark::DoNotOptimize(beacon.capabilities().ess());
        benchmark::DoNotOptimize(beacon.ssid());
        benchmark::DoNotOptimize(beacon.supported_rates());
        benchmark::DoNotOptimize(beacon.extended_supported_rates());
        benchmark::DoNotOptimize(beacon.rsn_information());
        benchmark::DoNotOptimize(beacon.country());
    }
    countAllocations(state, before);
}

// `bytes_each` is what a record takes of the heap, its element bytes and the heap's own included.
void holdRecords(benchmark::State& state) {
    constexpr std::size_t kRecords = 100'000;
    for (auto _ : state) {
        std::vector<halvane::HalvaneMAC> records;
        records.reserve(kRecords);
        const std::size_t before = ::mallinfo2().uordblks;
        for (std::size_t i = 0; i < kRecords; ++i) records.push_back(bench::decodedBeacon());
        const std::size_t held = ::mallinfo2().uordblks - before;
        state.counters["bytes_each"] =
            static_cast<double>(held) / kRecords + double{sizeof(halvane::HalvaneMAC)};
    }
}

BENCHMARK(decodeWithHalvane);
BENCHMARK(decodeAndAskHalvane);
BENCHMARK(decodeWithLibtins);
BENCHMARK(decodeAndAskLibtins);
BENCHMARK(holdRecords)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
