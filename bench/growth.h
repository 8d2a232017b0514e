// Rows that tell how the time of a reader grows with what it reads.
#ifndef BENCH_GROWTH_H
#define BENCH_GROWTH_H

#include <benchmark/benchmark.h>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace bench {

// A row is measured at its greatest size and at 1/4, 1/16, 1/64 and 1/256 of it. A quarter as
// smallest step tells linear (4 times the time) from quadratic (16 times) past all noise.
inline constexpr int kStep = 4;
inline constexpr std::int64_t kSpan = 256;

// Enough for the greatest size of every row to run; what is told is a ratio, not a time.
inline constexpr double kSecondsPerSize = 0.02;

inline void requireRow(const char* row, bool condition) {
    if (condition) return;
    std::fprintf(stderr, "%s: does not read its input\n", row);
    std::abort();
}

// `make(n)` returns an input of size n, which is made once a size and not measured. `read(input)`
// is measured; it returns true where it found in the input what is there, so that no row measures a
// refusal. REQUIRES: `most` is a power of 4 and at least kSpan.
template <typename Make, typename Read>
void addGrowth(const char* row, std::size_t most, Make make, Read read) {
    const auto run = [row, make, read](benchmark::State& state) {
        auto input = make(static_cast<std::size_t>(state.range(0)));
        for (auto _ : state) requireRow(row, read(input));
        state.SetComplexityN(state.range(0));
    };
    const auto greatest = static_cast<std::int64_t>(most);
    benchmark::RegisterBenchmark(row, run)
        ->RangeMultiplier(kStep)
        ->Range(greatest / kSpan, greatest)
        ->MinTime(kSecondsPerSize)
        ->Complexity();
}

// What the library logs of what it reads goes to no file.
void logToNobody();

// The rows, by what is read.
void addElementRows();
void addFormatRows();
void addNumberRows();
void addTextRows();
void addPropertyListRows();
void addReplyRows();
void addNotificationRows();
void addPreferenceRows();
void addRegulatoryRows();
void addCommandLineRows();
void addLogRows();
void addCaptureRows();
void addToolRows();
void addSimulationRows();

}  // namespace bench

#endif
