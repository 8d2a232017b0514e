#include "tools/halvane/output/signal_bar.h"

#include <algorithm>
#include <cstddef>

namespace halvane::tool {

namespace {

constexpr int kNothing = -95;  // dBm
constexpr int kAll = -35;      // dBm
constexpr int kRange = kAll - kNothing;
constexpr std::size_t kCells = 4;

int aboveNothing(int dBm) {
    return std::clamp(dBm, kNothing, kAll) - kNothing;
}

}  // namespace

std::string signalBar(int dBm, const Glyphs& glyphs) {
    const std::size_t stepsOfCell = glyphs.barSteps.size();
    const int all = static_cast<int>(kCells * stepsOfCell);
    const int nearest = (aboveNothing(dBm) * all + kRange / 2) / kRange;
    const auto steps = static_cast<std::size_t>(std::max(nearest, 1));

    std::string bar;
    std::size_t cells = steps / stepsOfCell;
    for (std::size_t i = 0; i < cells; ++i) bar += glyphs.barSteps.back();
    if (const std::size_t part = steps % stepsOfCell; part > 0) {
        bar += glyphs.barSteps[part - 1];
        ++cells;
    }
    for (; cells < kCells; ++cells) bar += glyphs.barRest;
    return bar;
}

const char* signalLevel(int dBm, const Glyphs& glyphs) {
    const int levels = static_cast<int>(glyphs.historySteps.size());
    const int level = std::min(aboveNothing(dBm) * levels / kRange, levels - 1);
    return glyphs.historySteps[static_cast<std::size_t>(level)];
}

}  // namespace halvane::tool
