// The text of a state file, wherever it comes from.
#ifndef TOOLS_HALVANED_SIM_STATE_TEXT_H
#define TOOLS_HALVANED_SIM_STATE_TEXT_H

#include <cstddef>
#include <string>

namespace halvane::sim {

inline constexpr std::size_t kLargestState = std::size_t{64} << 20;

// How people call what `path` names: that, or "standard input" for "-".
std::string stateName(const std::string& path);

// Everything that can be read at `path`, a file, a pipe or a device, or from standard input for
// "-", up to its end. Throws std::runtime_error, which names it, where that fails, or comes to more
// than kLargestState.
std::string stateText(const std::string& path);

}  // namespace halvane::sim

#endif
