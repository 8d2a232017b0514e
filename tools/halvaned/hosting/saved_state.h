// The daemon's state together with its file: what a client was told is done is in the file.
//
// Only one thread at a time may use it.
#ifndef TOOLS_HALVANED_HOSTING_SAVED_STATE_H
#define TOOLS_HALVANED_HOSTING_SAVED_STATE_H

#include <optional>
#include <string>
#include <utility>

#include "halvane/base/result.h"

#include "tools/halvaned/state/daemon_state.h"

namespace halvane::hosting {

class SavedState {
  public:
    explicit SavedState(std::string path) : path_(std::move(path)) {}

    // Reads the file. Returns what was wrong with it and where it is now, if it was damaged; the
    // error says why the daemon cannot go on.
    Result<std::optional<std::string>, std::string> load();

    const DaemonState& state() const { return state_; }

    // The state of an interface; that of a new one if nothing is known of it.
    const InterfaceState& of(const std::string& interface) const;

    // Sets the state of an interface, and writes the file. Returns whether that worked; if not, the
    // old state holds, and the reason is logged.
    bool set(const std::string& interface, InterfaceState changed);

  private:
    const std::string path_;
    DaemonState state_;
};

}  // namespace halvane::hosting

#endif
