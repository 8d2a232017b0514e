// Measures how the time of each reader of foreign bytes and text grows with the size of its input,
// and prints a table of fits. --benchmark_filter chooses rows, and --benchmark_out writes all their
// sizes.
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <malloc.h>

#include "bench/growth.h"
#include "bench/growth_table.h"

namespace {

// Large blocks come from the heap like small ones, and freed blocks stay there. Otherwise the
// system's time to map new pages, from some size on, would look like growth.
bool keepMemory() {
    constexpr int kNever = 1 << 30;
    return ::mallopt(M_MMAP_THRESHOLD, kNever) == 1 && ::mallopt(M_TRIM_THRESHOLD, kNever) == 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (!keepMemory()) return EXIT_FAILURE;
    // The benchmark reads no preferences of the user.
    if (::setenv("XDG_CONFIG_HOME", "/nonexistent", 1) != 0) return EXIT_FAILURE;
    bench::logToNobody();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return EXIT_FAILURE;

    bench::addElementRows();
    bench::addAirRows();
    bench::addFormatRows();
    bench::addNumberRows();
    bench::addTextRows();
    bench::addPropertyListRows();
    bench::addReplyRows();
    bench::addNotificationRows();
    bench::addPreferenceRows();
    bench::addRegulatoryRows();
    bench::addCommandLineRows();
    bench::addLogRows();
    bench::addCaptureRows();
    bench::addToolRows();
    bench::addSimulationRows();

    bench::GrowthTable table;
    benchmark::RunSpecifiedBenchmarks(&table);
    benchmark::Shutdown();
    return EXIT_SUCCESS;
}
