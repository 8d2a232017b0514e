// What the daemon remembers when it ends: the configurations of each interface, and what clients
// have asked it to do with them.
//
// Plain values, which hold secrets as HalvaneBSSConfig does. Threads: as for a standard container.
#ifndef TOOLS_HALVANED_STATE_DAEMON_STATE_H
#define TOOLS_HALVANED_STATE_DAEMON_STATE_H

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "halvane/model/bss_config.h"

namespace halvane::hosting {

// A new interface is enabled, has the role that the daemon gives it, and hosts nothing.
struct InterfaceState {
    std::vector<HalvaneBSSConfig> configurations{};
    std::optional<std::string> role{};
    bool isEnabled = true;
    bool isStarted = false;  // a client has started it, and none has stopped it since

    bool operator==(const InterfaceState&) const = default;
};

struct DaemonState {
    // By the interface's name, also of interfaces that are not there now.
    std::map<std::string, InterfaceState> interfaces{};

    bool operator==(const DaemonState&) const = default;
};

}  // namespace halvane::hosting

#endif
