// Reads the requests of the daemon's protocol.
#ifndef HALVANE_SERVICE_REQUEST_INTERNAL_H
#define HALVANE_SERVICE_REQUEST_INTERNAL_H

#include <optional>
#include <string>
#include <string_view>

#include "halvane/base/mac_address.h"
#include "halvane/base/result.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/daemon_log_controls.h"
#include "halvane/model/daemon_status.h"
#include "halvane/platform/bus/ipc_message.h"

namespace halvane {

enum class DaemonCommand {
    Devices,
    Interfaces,
    Channels,
    Configurations,
    Stations,
    Add,
    Remove,
    Enable,
    Disable,
    Role,
    Start,
    Stop,
    Kick,
    SetLogging,
    Logging,
    Subscribe,
};

// The values that a request of some command needs. Reads one into the request; returns Done, or
// the status of a request that has to be refused.
struct DecodedRequest;
using ReadRequest = DaemonStatus (*)(const IPCMessage& message, DecodedRequest& request);

struct CommandInfo {
    const char* name;  // as the message carries it
    DaemonCommand command;
    ReadRequest read;
};

// The values of a request. Each is set if the command needs it.
struct DecodedRequest {
    DaemonCommand command = DaemonCommand::Devices;
    std::optional<std::string> interface = {};
    std::string role = {};
    MacAddress station = {};
    std::optional<HalvaneBSSConfig> configuration = {};
    DaemonLogControls controls = {};
    bool wantsNotifications = false;
};

// Returns the command of a name; null if there is none.
const CommandInfo* commandFor(std::string_view name);

// Whether the reply to the command holds a list.
bool isList(DaemonCommand command);

// Whether a backend carries the command out.
bool isForBackend(DaemonCommand command);

// Returns the command of a request, or why there is none.
Result<const CommandInfo*, DaemonStatus> commandIn(const IPCMessage& message);

// Reads the keys that the command needs, or returns why the request has to be refused. Ignores
// other keys.
Result<DecodedRequest, DaemonStatus> decoded(const CommandInfo& command, const IPCMessage& message);

}  // namespace halvane

#endif
