// Places the names in a picture, so that none stands in another one or is cut by a line.
//
// Pure functions and plain values; any thread may call them.
#ifndef TOOLS_HALVANE_REPORT_CHART_LABELS_H
#define TOOLS_HALVANE_REPORT_CHART_LABELS_H

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace halvane::tool {

// How wide a text is at most, in pixels of a font of 11 pixels, reckoned by letters.
double textWidth(std::string_view text);

// A shape that wants a name above its roof.
struct LabelWish {
    double left = 0;   // per cent
    double right = 0;  // per cent
    double roof = 0;   // pixels
    double width = 0;  // pixels
};

// Where a name stands: its middle and its baseline.
struct PlacedLabel {
    double x = 0;  // per cent
    double y = 0;  // pixels
    bool hasLeader = false;
    std::size_t level = 0;  // index of the narrowest width at which there is room
};

// The widths of the picture for which names are placed, in pixels. What is free at one is free at
// all greater ones, because distances across only grow.
using ChartWidths = std::array<double, 3>;

// Places names in the order of the wishes: the first ones have the choice. Absent: there is no
// room at any width.
std::vector<std::optional<PlacedLabel>> placeLabels(std::span<const LabelWish> wishes,
                                                    const ChartWidths& widths);

}  // namespace halvane::tool

#endif
