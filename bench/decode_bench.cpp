// A 200-byte beacon decoded in full - walk, elements, rates, label - beside libtins, which parses
// the same bytes and returns rates, RSN information and SSID.
#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstdlib>
#include <tins/dot11/dot11_beacon.h>
#include <tins/rsn_information.h>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"

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

BENCHMARK(decodeWithHalvane);
BENCHMARK(decodeWithLibtins);

}  // namespace

BENCHMARK_MAIN();
