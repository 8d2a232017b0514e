// The signal over a time as a picture of several lines, from -95 dBm up.
//
// A free function without state; any thread may call it.
#ifndef TOOLS_HALVANE_OUTPUT_SIGNAL_PICTURE_H
#define TOOLS_HALVANE_OUTPUT_SIGNAL_PICTURE_H

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "tools/halvane/output/glyphs.h"

namespace halvane::tool {

// The cells before each line: " -39 " at every other one.
inline constexpr std::size_t kSignalLabelCells = 5;

// With more lines, the uppermost would be of signals above 0 dBm.
inline constexpr std::size_t kMostSignalLines = 11;

// Returns `lines` lines, the strongest first. Each is 8 dB high, and has a cell for each value
// (dBm): blank where there is none, at least one step of the lowest line where there is one. The
// number beside a line is the signal that fills it. No line ends with a blank.
std::vector<std::string> signalPicture(std::span<const std::optional<int>> values,
                                       std::size_t lines, const Glyphs& glyphs);

}  // namespace halvane::tool

#endif
