// What the commands that ask the Wi-Fi daemon share: texts that it takes, and what they say where
// it gives no result.
#ifndef TOOLS_HALVANE_COMMANDS_DAEMON_SESSION_H
#define TOOLS_HALVANE_COMMANDS_DAEMON_SESSION_H

#include <string>

#include "halvane/daemon/daemon_result.h"

namespace halvane::tool {

// Tells why `command` has no result, and returns kExitFailed.
int failFor(const char* command, const DaemonError& error);

// Whether a text can be sent, and stand in a list of the daemon's: whether it is UTF-8.
bool isText(const std::string& text);

// The name of an interface: such a text, and not an empty one.
bool isInterfaceName(const std::string& text);

}  // namespace halvane::tool

#endif
