// SNScanF beside the C library's sscanf, on a line of words and numbers.
#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "halvane/utils/scan_time.h"

namespace {

constexpr char kLine[] = "channel 36 width 80 flags 0x1F";
constexpr char kFormat[] = "%15s %d %15s %d %15s %x";

struct Fields {
    char words[3][16];
    int channel = 0;
    int width = 0;
    unsigned flags = 0;
};

template <typename Scan>
void measure(benchmark::State& state, Scan scan) {
    Fields fields;
    const auto run = [&] {
        return scan(fields.words[0], &fields.channel, fields.words[1], &fields.width,
                    fields.words[2], &fields.flags);
    };
    if (run() != 6 || fields.channel != 36 || fields.flags != 0x1F) std::abort();
    for (auto _ : state) {
        benchmark::DoNotOptimize(run());
        benchmark::DoNotOptimize(fields);
    }
}

void lineSNScanF(benchmark::State& state) {
    measure(state, [](auto... fields) { return SNScanF(kLine, SIZE_MAX, kFormat, fields...); });
}

void lineSscanf(benchmark::State& state) {
    measure(state, [](auto... fields) { return std::sscanf(kLine, kFormat, fields...); });
}

BENCHMARK(lineSNScanF);
BENCHMARK(lineSscanf);

}  // namespace

BENCHMARK_MAIN();
