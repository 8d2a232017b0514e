// Reads the text of a state file from any source.
#ifndef TOOLS_HALVANED_SIM_STATE_TEXT_H
#define TOOLS_HALVANED_SIM_STATE_TEXT_H

#include <cstddef>
#include <string>

#include "halvane/base/result.h"

namespace halvane::sim {

inline constexpr std::size_t kLargestState = std::size_t{64} << 20;

// The name of `path` in messages: `path` itself, or "standard input" for "-".
std::string stateName(const std::string& path);

// Reads `path` (a file, a pipe or a device), or standard input for "-", up to the end.
// Returns a message that names it if that fails or if there is more than kLargestState.
Result<std::string, std::string> stateText(const std::string& path);

}  // namespace halvane::sim

#endif
