// A list of interfaces to XML and back, beside pugixml; and the same from records to records.
#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstdlib>
#include <pugixml.hpp>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/property_list_value.h"
#include "halvane/base/skeleton_internal.h"
#include "halvane/model/interface.h"
#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/platform/plist/xml_property_list_reader.h"

#include "bench/interface_list.h"

namespace {

using halvane::HalvaneInterface;
using halvane::PropertyListArray;
using halvane::PropertyListValue;

constexpr int kInterfaces = 1000;

void require(bool condition) {
    if (!condition) std::abort();
}

// The data with which every row starts. Each row checks that it ends with the same data.
struct Subject {
    std::vector<HalvaneInterface> records = bench::interfaces(kInterfaces);
    PropertyListValue value = halvane::skeleton::skeletonsOf(records);
    std::string text = halvane::xmlPropertyList(value).value_or("");
};

const Subject& subject() {
    static const Subject subject;
    return subject;
}

template <typename Run>
void measure(benchmark::State& state, Run run) {
    for (auto _ : state) benchmark::DoNotOptimize(run());
    state.SetBytesProcessed(static_cast<std::int64_t>(subject().text.size()) *
                            static_cast<std::int64_t>(state.iterations()));
}

void writeHalvane(benchmark::State& state) {
    const auto run = [] { return halvane::xmlPropertyList(subject().value); };
    require(run() == subject().text);
    measure(state, run);
}

// The same text, from an existing tree.
void writePugixml(benchmark::State& state) {
    struct Text : pugi::xml_writer {
        void write(const void* data, std::size_t size) override {
            text.append(static_cast<const char*>(data), size);
        }
        std::string text;
    };
    pugi::xml_document tree;
    require(
        tree.load_string(subject().text.c_str(), pugi::parse_default | pugi::parse_declaration));
    const auto run = [&tree] {
        Text out;
        tree.save(out, "\t", pugi::format_default, pugi::encoding_utf8);
        return std::move(out.text);
    };
    pugi::xml_document again;
    require(again.load_string(run().c_str()) &&
            again.select_nodes("//integer").size() == tree.select_nodes("//integer").size());
    measure(state, run);
}

void readHalvane(benchmark::State& state) {
    const auto run = [] { return halvane::propertyListFromXml(subject().text); };
    require(run() == subject().value);
    measure(state, run);
}

// With a comment at the end, which the reader of plain documents does not know: the whole text is
// read again.
void readHalvaneAgain(benchmark::State& state) {
    const auto run = [text = subject().text + "<!-- -->"] {
        return halvane::propertyListFromXml(text);
    };
    require(run() == subject().value);
    measure(state, run);
}

// Only the tree, without values.
void readPugixml(benchmark::State& state) {
    const auto run = [] {
        pugi::xml_document tree;
        require(tree.load_buffer(subject().text.data(), subject().text.size()));
        return tree.first_child() == nullptr;
    };
    measure(state, run);
}

void recordsToXml(benchmark::State& state) {
    const auto run = [] {
        return halvane::xmlPropertyList(halvane::skeleton::skeletonsOf(subject().records));
    };
    require(run() == subject().text);
    measure(state, run);
}

void recordsFromXml(benchmark::State& state) {
    const auto run = [] {
        auto value = halvane::propertyListFromXml(subject().text);
        return halvane::skeleton::recordsOf<HalvaneInterface>(
            std::move(*value->as<PropertyListArray>()));
    };
    require(run() == subject().records);
    measure(state, run);
}

BENCHMARK(writeHalvane);
BENCHMARK(writePugixml);
BENCHMARK(readHalvane);
BENCHMARK(readHalvaneAgain);
BENCHMARK(readPugixml);
BENCHMARK(recordsToXml);
BENCHMARK(recordsFromXml);

}  // namespace

BENCHMARK_MAIN();
