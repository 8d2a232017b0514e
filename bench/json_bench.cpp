// A record as a line of JSON, beside nlohmann-json. That builds a tree of the same record from the
// same tables, and dumps it.
#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>

#include "halvane/capture/frame_record.h"
#include "halvane/ie/mac.h"
#include "halvane/regulatory/sku.h"

#include "bench/allocation_count.h"
#include "bench/beacon.h"
#include "bench/beacon_line.h"
#include "tests/support/json_tree.h"
#include "tools/halvane/output/frame_origin.h"
#include "tools/halvane/output/frame_properties.h"
#include "tools/halvane/output/json_record.h"
#include "tools/halvane/output/json_writer.h"
#include "tools/halvane/output/record_properties.h"
#include "tools/halvane/output/regulatory_json.h"
#include "tools/halvane/output/regulatory_properties.h"

namespace {

using halvane::HalvaneSKU;
using halvane::capture::Sighting;
using halvane::tool::JSONWriter;

void require(bool holds) {
    if (!holds) std::abort();
}

void countAllocations(benchmark::State& state, std::uint64_t before) {
    state.counters["allocations"] = benchmark::Counter(
        static_cast<double>(bench::allocationCount() - before), benchmark::Counter::kAvgIterations);
}

Sighting sightedBeacon() {
    return {bench::decodedBeacon(), std::nullopt};
}

std::string treeText(const Sighting& sighting) {
    auto object = halvane::testing::JSON::object();
    halvane::testing::addMembers(object, bench::kBeaconOrigin);
    halvane::testing::addMembers(object, sighting);
    halvane::testing::addMembers(object, sighting.record);
    return object.dump() + '\n';
}

void lineHalvane(benchmark::State& state) {
    const Sighting sighting = sightedBeacon();
    JSONWriter writer;
    const auto writeLine = [&] {
        bench::writeBeaconLine(writer, sighting);
        writer.newline();
    };
    writeLine();
    require(writer.text() == treeText(sighting));
    const auto before = bench::allocationCount();
    for (auto _ : state) {
        writeLine();
        benchmark::DoNotOptimize(writer.text().data());
    }
    countAllocations(state, before);
    state.SetItemsProcessed(state.iterations());
}

void lineNlohmann(benchmark::State& state) {
    const Sighting sighting = sightedBeacon();
    require(treeText(sighting).size() > 2000);
    const auto before = bench::allocationCount();
    for (auto _ : state) benchmark::DoNotOptimize(treeText(sighting));
    countAllocations(state, before);
    state.SetItemsProcessed(state.iterations());
}

void documentHalvane(benchmark::State& state) {
    const HalvaneSKU sku = HalvaneSKU::createDefaultSKUList().back();
    JSONWriter writer(JSONWriter::Layout::Indented);
    const auto writeDocument = [&] {
        writer.clear();
        writeJSON(writer, sku);
    };
    writeDocument();
    require(writer.text() == halvane::testing::treeOf(sku).dump(2));
    const auto before = bench::allocationCount();
    for (auto _ : state) {
        writeDocument();
        benchmark::DoNotOptimize(writer.text().data());
    }
    countAllocations(state, before);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(writer.text().size()));
}

void documentNlohmann(benchmark::State& state) {
    const HalvaneSKU sku = HalvaneSKU::createDefaultSKUList().back();
    const std::size_t size = halvane::testing::treeOf(sku).dump(2).size();
    const auto before = bench::allocationCount();
    for (auto _ : state) benchmark::DoNotOptimize(halvane::testing::treeOf(sku).dump(2));
    countAllocations(state, before);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(size));
}

BENCHMARK(lineHalvane);
BENCHMARK(lineNlohmann);
BENCHMARK(documentHalvane);
BENCHMARK(documentNlohmann);

}  // namespace

BENCHMARK_MAIN();
