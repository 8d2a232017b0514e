#include "tools/halvaned/hosting/saved_state.h"

#include "tools/halvaned/hosting/daemon_logging.h"
#include "tools/halvaned/state/state_file.h"

namespace halvane::hosting {

Result<std::optional<std::string>, std::string> SavedState::load() {
    auto loaded = loadState(path_);
    if (!loaded) return Unexpected(std::move(loaded).error());
    state_ = std::move(loaded->state);
    return std::move(loaded->damage);
}

const InterfaceState& SavedState::of(const std::string& interface) const {
    static const InterfaceState kNew;
    const auto found = state_.interfaces.find(interface);
    return found != state_.interfaces.end() ? found->second : kNew;
}

bool SavedState::set(const std::string& interface, InterfaceState changed) {
    if (changed == of(interface)) return true;
    DaemonState next = state_;
    next.interfaces.insert_or_assign(interface, std::move(changed));
    if (const auto failure = saveState(path_, next)) {
        logError(*failure);
        return false;
    }
    state_ = std::move(next);
    return true;
}

}  // namespace halvane::hosting
