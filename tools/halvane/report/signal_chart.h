// The part "Signal over time": a small picture for each network that was measured often enough.
#ifndef TOOLS_HALVANE_REPORT_SIGNAL_CHART_H
#define TOOLS_HALVANE_REPORT_SIGNAL_CHART_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "tools/halvane/report/html_writer.h"
#include "tools/halvane/report/report_data.h"
#include "tools/halvane/survey/signal_history.h"

namespace halvane::tool {

// A time in which captures follow each other, or run at once.
struct Stretch {
    std::int64_t begin = 0;  // nanoseconds since 1970-01-01 00:00 UTC
    std::int64_t end = 0;
    std::vector<std::size_t> captures{};  // indexes
};

// All captures that tell times, by their beginning. A pause of a minute begins a new stretch.
std::vector<Stretch> stretchesOf(std::span<const SurveyedCapture> captures);

// What a network was like in a part of a stretch.
struct SignalPoint {
    int bin = 0;
    double mean = 0;  // dBm
    int least = 0;
    int greatest = 0;
    std::uint64_t count = 0;
};

// The bins of a picture: 60, or 30 below a minute.
int binsOf(const Stretch& stretch);
std::vector<SignalPoint> pointsOf(const SignalHistory& history, const Stretch& stretch);

void writeSignals(HtmlWriter& html, const ReportData& data);

}  // namespace halvane::tool

#endif
