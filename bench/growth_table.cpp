#include "bench/growth_table.h"

#include <array>
#include <cstdio>

namespace bench {

namespace {

const char* nameOf(benchmark::BigO growth) {
    switch (growth) {
        case benchmark::o1:
            return "1";
        case benchmark::oN:
            return "n";
        case benchmark::oNSquared:
            return "n^2";
        case benchmark::oNCubed:
            return "n^3";
        case benchmark::oLogN:
            return "log n";
        case benchmark::oNLogN:
            return "n log n";
        case benchmark::oNone:
        case benchmark::oAuto:
        case benchmark::oLambda:
            break;
    }
    return "?";
}

bool isSteep(benchmark::BigO growth) {
    return growth == benchmark::oNSquared || growth == benchmark::oNCubed;
}

std::string timeText(double nanoseconds) {
    constexpr std::array<const char*, 3> kUnits = {"ns", "us", "ms"};
    std::size_t unit = 0;
    for (; unit + 1 < kUnits.size() && nanoseconds >= 1000; ++unit) nanoseconds /= 1000;
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.3g %s", nanoseconds, kUnits.at(unit));
    return text.data();
}

}  // namespace

bool GrowthTable::ReportContext(const Context&) {
    std::printf(
        "| row | grows as | RMS | greatest n | time there | of that at n/4 |\n"
        "| --- | --- | --- | --- | --- | --- |\n");
    return true;
}

void GrowthTable::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.report_big_o) {
            printFit(run);
        } else if (run.report_rms) {
            endRow(run);
        } else {
            addSize(run);
        }
    }
    std::fflush(stdout);
}

void GrowthTable::addSize(const Run& run) {
    row_ = {.secondLast = row_.last, .last = run.GetAdjustedCPUTime(), .size = run.complexity_n};
}

void GrowthTable::printFit(const Run& run) {
    ++rows_;
    const bool steep = isSteep(run.complexity);
    steepRows_ += steep ? 1 : 0;
    std::printf("| %s | %s%.3g %s%s |", run.run_name.function_name.c_str(), steep ? "**" : "",
                run.GetAdjustedCPUTime(), nameOf(run.complexity), steep ? "**" : "");
}

void GrowthTable::endRow(const Run& run) {
    constexpr double kPercent = 100;
    std::printf(" %.0f %% | %lld | %s | %.1f times |\n", kPercent * run.GetAdjustedCPUTime(),
                static_cast<long long>(row_.size), timeText(row_.last).c_str(),
                row_.secondLast > 0 ? row_.last / row_.secondLast : 0);
    row_ = {};
}

void GrowthTable::Finalize() {
    std::printf("\n%zu rows, %zu of them above n log n\n", rows_, steepRows_);
}

}  // namespace bench
