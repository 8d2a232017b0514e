// The tool's end of the Wi-Fi daemon, and what it says where there is none.
#ifndef TOOLS_HALVANE_COMMANDS_DAEMON_SESSION_H
#define TOOLS_HALVANE_COMMANDS_DAEMON_SESSION_H

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "halvane/base/error.h"
#include "halvane/base/status.h"
#include "halvane/daemon/xpc_client.h"
#include "halvane/model/daemon_service.h"
#include "halvane/model/interface.h"

namespace halvane::tool {

// A client of the daemon. What the library logs of it is not shown, unless the preferences say so:
// commands tell in their own words what became of them.
std::unique_ptr<HalvaneXPCClient> connectToDaemon();

// What a request comes to that nobody answers.
inline Error noAnswer() {
    return daemonError(kStatusConversionFailed);
}

// Tells why `command` got no answer that it can use, and answers kExitFailed.
int failFor(const char* command, const Error& error);

// Tells that the daemon was there and is gone, and answers kExitFailed.
int failForLoss(const char* command);

// What the daemon lists of its interfaces, to find out whether there is a daemon before it is asked
// for what is answered in the same way with and without one. Absent where nobody answers, which is
// told then; a daemon that answers with a status has no interfaces to show but is there.
struct DaemonInterfaces {
    bool isListed = false;
    std::vector<HalvaneInterface> list;

    // False only where there is a list without it.
    bool mayHave(const std::string& interfaceName) const;
};
std::optional<DaemonInterfaces> findDaemon(const char* command, HalvaneXPCClient& client);

// Whether a text can be sent, and stand in a list of the daemon's: whether it is UTF-8.
bool isText(const std::string& text);

// The name of an interface: such a text, and not an empty one.
bool isInterfaceName(const std::string& text);

}  // namespace halvane::tool

#endif
