// SNPrintF beside the C library's snprintf, on a line of a log and on a MAC address.
#include <array>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "halvane/utils/printf.h"

namespace {

using Buffer = std::array<char, 256>;

constexpr unsigned char kAddress[] = {0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E};
constexpr std::string_view kAddressText = "02:1A:2B:3C:4D:5E";
constexpr std::string_view kLine =
    "scan: 42 frames from neighbour-12 on channel 6 in 1234 ms, flags 0x00000411, RSSI -61";

#define LOG_LINE_ARGUMENTS                                                             \
    "%s: %d frames from %s on channel %u in %u ms, flags 0x%08X, RSSI %d", "scan", 42, \
        "neighbour-12", 6u, 1234u, 0x411u, -61
#define ADDRESS_ARGUMENTS                                                                \
    "%02X:%02X:%02X:%02X:%02X:%02X", kAddress[0], kAddress[1], kAddress[2], kAddress[3], \
        kAddress[4], kAddress[5]

template <typename Format>
void measure(benchmark::State& state, std::string_view expected, Format format) {
    Buffer buffer;
    format(buffer);
    if (buffer.data() != expected) std::abort();
    for (auto _ : state) {
        format(buffer);
        benchmark::DoNotOptimize(buffer);
    }
}

void logLineSNPrintF(benchmark::State& state) {
    measure(state, kLine,
            [](Buffer& buffer) { SNPrintF(buffer.data(), buffer.size(), LOG_LINE_ARGUMENTS); });
}

void logLineSnprintf(benchmark::State& state) {
    measure(state, kLine, [](Buffer& buffer) {
        std::snprintf(buffer.data(), buffer.size(), LOG_LINE_ARGUMENTS);
    });
}

void addressSNPrintF(benchmark::State& state) {
    measure(state, kAddressText,
            [](Buffer& buffer) { SNPrintF(buffer.data(), buffer.size(), "%.6a", kAddress); });
}

void addressByOctetsSNPrintF(benchmark::State& state) {
    measure(state, kAddressText,
            [](Buffer& buffer) { SNPrintF(buffer.data(), buffer.size(), ADDRESS_ARGUMENTS); });
}

void addressByOctetsSnprintf(benchmark::State& state) {
    measure(state, kAddressText,
            [](Buffer& buffer) { std::snprintf(buffer.data(), buffer.size(), ADDRESS_ARGUMENTS); });
}

BENCHMARK(logLineSNPrintF);
BENCHMARK(logLineSnprintf);
BENCHMARK(addressSNPrintF);
BENCHMARK(addressByOctetsSNPrintF);
BENCHMARK(addressByOctetsSnprintf);

}  // namespace

BENCHMARK_MAIN();
