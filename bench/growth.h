// Rows that show how the time of a reader grows with the size of its input.
#ifndef BENCH_GROWTH_H
#define BENCH_GROWTH_H

#include <benchmark/benchmark.h>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace bench {

// A row is measured at its greatest size and at 1/4, 1/16, 1/64 and 1/256 of it. A step of 4
// distinguishes linear growth (4 times the time) from quadratic growth (16 times) despite all
// noise.
inline constexpr int kStep = 4;
inline constexpr std::int64_t kSpan = 256;

// Long enough for the greatest size of every row. The result is a ratio, not a time.
inline constexpr double kSecondsPerSize = 0.02;

inline void requireRow(const char* row, bool condition) {
    if (condition) return;
    std::fprintf(stderr, "%s: does not read its input\n", row);
    std::abort();
}

// `make(n)` returns an input of size n. It runs once per size, and is not measured. `read(input)`
// is measured. It returns true if it read the input correctly, so that no row measures a refusal.
// REQUIRES: `most` is a power of 4 and at least kSpan.
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

// The library's log messages go to no file.
void logToNobody();

// The rows, by kind of input.
void addElementRows();
void addAirRows();
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
