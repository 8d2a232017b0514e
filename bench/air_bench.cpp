// The whole profile of a beacon - every element decoded, channel, rates, security, findings -
// beside libtins' bare walk over the options of the same frame. Wi-Fi 4: 200 octets; Wi-Fi 7 with a
// multi-link device: 500 octets.
#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <tins/dot11/dot11_beacon.h>
#include <vector>

#include "halvane/air/bit_octets.h"
#include "halvane/air/bss_profile.h"
#include "halvane/air/element_range.h"
#include "halvane/air/profile.h"

#include "bench/allocation_count.h"
#include "bench/beacon.h"
#include "bench/multi_link_beacon.h"

namespace {

using namespace halvane::air;

void require(bool holds) {
    if (!holds) std::abort();
}

const std::vector<std::uint8_t>& wifi7() {
    static const std::vector<std::uint8_t> frame = bench::multiLinkBeacon();
    return frame;
}

std::span<const std::uint8_t> frameOf(const benchmark::State& state) {
    return state.range(0) == 4 ? std::span<const std::uint8_t>(bench::kBeacon)
                               : std::span<const std::uint8_t>(wifi7());
}

void countAllocations(benchmark::State& state, std::uint64_t before) {
    state.counters["allocations"] = benchmark::Counter(
        static_cast<double>(bench::allocationCount() - before), benchmark::Counter::kAvgIterations);
}

void profile(benchmark::State& state) {
    const auto elements = frameOf(state).subspan(bench::kFixedSize);
    const FixedFields fixed = {{}, 0x0411, 100};
    const auto check = profileOf(elements, fixed, {});
    require(static_cast<int>(*check.generation) == state.range(0));
    require(state.range(0) == 4 || (check.mld && check.mld->links.size() == 2 &&
                                    check.channel.span->width == 160 && check.rates.eht));
    const auto before = bench::allocationCount();
    for (auto _ : state) benchmark::DoNotOptimize(profileOf(elements, fixed, {}));
    countAllocations(state, before);
}

void walk(benchmark::State& state) {
    const auto elements = frameOf(state).subspan(bench::kFixedSize);
    for (auto _ : state) {
        for (const Element& element : ElementRange(elements)) benchmark::DoNotOptimize(element.id);
    }
}

void walkWithLibtins(benchmark::State& state) {
    const auto frame = frameOf(state);
    const auto before = bench::allocationCount();
    for (auto _ : state) {
        const Tins::Dot11Beacon beacon(frame.data(), static_cast<std::uint32_t>(frame.size()));
        for (const auto& option : beacon.options()) benchmark::DoNotOptimize(option.option());
    }
    countAllocations(state, before);
}

BENCHMARK(profile)->Arg(4)->Arg(7);
BENCHMARK(walk)->Arg(4)->Arg(7);
BENCHMARK(walkWithLibtins)->Arg(4)->Arg(7);

}  // namespace

BENCHMARK_MAIN();
