#include "tools/halvane/output/signal_picture.h"

#include <algorithm>
#include <utility>

namespace halvane::tool {

namespace {

constexpr int kNothing = -95;   // dBm
constexpr int kLineHeight = 8;  // dB

std::string labelOf(int dBm) {
    const std::string number = std::to_string(dBm);
    return std::string(kSignalLabelCells - 1 - number.size(), ' ') + number + ' ';
}

// The part of a line that ends at `full` dBm.
const char* cellOf(const std::optional<int>& value, int full, const Glyphs& glyphs) {
    if (!value) return " ";
    const int levels = static_cast<int>(glyphs.historySteps.size());
    const int above = std::clamp(*value - (full - kLineHeight), 0, kLineHeight);
    const bool isLowest = full - kLineHeight == kNothing;
    // A part of a step counts as a step.
    const int level = std::max((above * levels + kLineHeight - 1) / kLineHeight, isLowest ? 1 : 0);
    return level == 0 ? " " : glyphs.historySteps[static_cast<std::size_t>(level - 1)];
}

void dropTrailingBlanks(std::string& line) {
    line.erase(line.find_last_not_of(' ') + 1);
}

}  // namespace

std::vector<std::string> signalPicture(std::span<const std::optional<int>> values,
                                       std::size_t lines, const Glyphs& glyphs) {
    std::vector<std::string> picture;
    for (std::size_t i = 0; i < lines; ++i) {
        const int full = kNothing + static_cast<int>(lines - i) * kLineHeight;
        std::string line = i % 2 == 0 ? labelOf(full) : std::string(kSignalLabelCells, ' ');
        for (const auto& value : values) line += cellOf(value, full, glyphs);
        dropTrailingBlanks(line);
        picture.push_back(std::move(line));
    }
    return picture;
}

}  // namespace halvane::tool
