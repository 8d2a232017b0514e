// Shared by the commands that ask the Wi-Fi daemon: the texts that the daemon accepts, and the
// messages for requests without a result.
#ifndef TOOLS_HALVANE_COMMANDS_DAEMON_SESSION_H
#define TOOLS_HALVANE_COMMANDS_DAEMON_SESSION_H

#include <string>

#include "halvane/daemon/daemon_client.h"
#include "halvane/daemon/daemon_result.h"

namespace halvane::tool {

// Prints why `command` has no result, and returns kExitFailed.
int failFor(const char* command, const DaemonError& error);

// The same for a request about an interface. If the daemon refused it because it has no such
// interface, the message says so and names those that there are.
int failFor(const char* command, const DaemonError& error, DaemonClient& daemon,
            const std::string& interface);

// Whether a text can be sent, and can be in a list of the daemon: whether it is UTF-8.
bool isText(const std::string& text);

// Whether a text can be the name of an interface: it is such a text, and not empty.
bool isInterfaceName(const std::string& text);

}  // namespace halvane::tool

#endif
