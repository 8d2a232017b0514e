// BoyerMooreSearch beside memmem and std::boyer_moore_searcher, on a megabyte of log lines with the
// pattern at the end.
#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <random>
#include <string.h>
#include <string>
#include <string_view>

#include "halvane/utils/printf.h"
#include "halvane/utils/strings.h"

namespace {

// The pattern of a size: bytes of the last line that no other line holds.
constexpr std::string_view kLastLine = "WPA handshake failed: group key MIC is wrong, code 7\n";

std::string logText() {
    std::mt19937 random(1);
    const char* const events[] = {"beacon received from", "probe response sent to",
                                  "association request of", "deauthenticated by"};
    std::string text;
    while (text.size() < 1'000'000) {
        char line[160];
        SNPrintF(line, sizeof(line),
                 "2024-03-%02u 10:%02u:%02u.%06u halvaned[%u]: %s 02:1a:2b:%02x:%02x:%02x on "
                 "channel %u, RSSI -%u dBm\n",
                 1 + random() % 28, random() % 60, random() % 60, random() % 1'000'000,
                 300 + random() % 9, events[random() % 4], random() % 256, random() % 256,
                 random() % 256, 1 + random() % 165, 30 + random() % 60);
        text += line;
    }
    return text.append(kLastLine);
}

template <typename Search>
void measure(benchmark::State& state, Search search) {
    static const std::string text = logText();
    const std::string_view pattern = kLastLine.substr(0, static_cast<std::size_t>(state.range(0)));
    const auto run = [&] { return search(std::string_view(text), pattern); };
    if (run() != text.data() + (text.size() - kLastLine.size())) std::abort();
    for (auto _ : state) benchmark::DoNotOptimize(run());
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void searchBoyerMooreSearch(benchmark::State& state) {
    measure(state, [](std::string_view text, std::string_view pattern) {
        return static_cast<const char*>(
            BoyerMooreSearch(text.data(), text.size(), pattern.data(), pattern.size()));
    });
}

void searchMemmem(benchmark::State& state) {
    measure(state, [](std::string_view text, std::string_view pattern) {
        return static_cast<const char*>(
            ::memmem(text.data(), text.size(), pattern.data(), pattern.size()));
    });
}

void searchStdBoyerMoore(benchmark::State& state) {
    measure(state, [](std::string_view text, std::string_view pattern) {
        const std::boyer_moore_searcher searcher(pattern.begin(), pattern.end());
        return &*std::search(text.begin(), text.end(), searcher);
    });
}

void ignoringCaseStrncasestr(benchmark::State& state) {
    measure(state, [](std::string_view text, std::string_view pattern) -> const char* {
        return strncasestr(text.data(), text.size(), std::string(pattern).c_str());
    });
}

void ignoringCaseStrcasestr(benchmark::State& state) {
    measure(state, [](std::string_view text, std::string_view pattern) -> const char* {
        return ::strcasestr(text.data(), std::string(pattern).c_str());
    });
}

#define PATTERN_SIZES ->Arg(4)->Arg(12)->Arg(32)
BENCHMARK(searchBoyerMooreSearch) PATTERN_SIZES;
BENCHMARK(searchMemmem) PATTERN_SIZES;
BENCHMARK(searchStdBoyerMoore) PATTERN_SIZES;
BENCHMARK(ignoringCaseStrncasestr) PATTERN_SIZES;
BENCHMARK(ignoringCaseStrcasestr) PATTERN_SIZES;

}  // namespace

BENCHMARK_MAIN();
