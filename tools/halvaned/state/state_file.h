// The file in which the daemon keeps its state (state_text.h). Only its user can read it.
//
// REQUIRES of both functions: no other process uses the file. A daemon therefore first becomes the
// owner of its name on the bus.
#ifndef TOOLS_HALVANED_STATE_STATE_FILE_H
#define TOOLS_HALVANED_STATE_STATE_FILE_H

#include <optional>
#include <string>

#include "halvane/base/result.h"

#include "tools/halvaned/state/daemon_state.h"

namespace halvane::hosting {

struct LoadedState {
    DaemonState state{};
    // Why the file could not be used, and what it is called now, for people. Absent for a sound
    // file and for a missing one, which is an empty state.
    std::optional<std::string> damage{};
};

// A damaged file, or one of another version, is renamed to the first free name of ".damaged",
// ".damaged.2" and so on behind its own, and the state is empty. The error says that the file is
// there but cannot be read, or cannot be renamed: a daemon that went on would replace it.
Result<LoadedState, std::string> loadState(const std::string& path);

// Replaces the file as a whole: after a crash at any time it holds the old state or the new one.
// Creates its folder if that is missing. Returns what went wrong; the old file is then unchanged.
std::optional<std::string> saveState(const std::string& path, const DaemonState& state);

}  // namespace halvane::hosting

#endif
