// The notifications of the daemon's protocol.
#ifndef HALVANE_DAEMON_NOTIFICATION_INTERNAL_H
#define HALVANE_DAEMON_NOTIFICATION_INTERNAL_H

#include <optional>

#include "halvane/daemon/daemon_events.h"
#include "halvane/model/daemon_service.h"
#include "halvane/platform/bus/ipc_message.h"

namespace halvane {

struct DaemonNotification {
    StationChange::Kind kind;
    const char* command;  // as the message carries it
};

// A message's command is compared with these in this order.
inline constexpr DaemonNotification kDaemonNotifications[] = {
    {StationChange::Kind::Authorized, HALVANE_DAEMON_SERVICE_NAME ".status.client.authorized"},
    {StationChange::Kind::Joined, HALVANE_DAEMON_SERVICE_NAME ".status.client.joined"},
    {StationChange::Kind::Kicked, HALVANE_DAEMON_SERVICE_NAME ".status.client.kicked"},
    {StationChange::Kind::Left, HALVANE_DAEMON_SERVICE_NAME ".status.client.left"},
};

// Returns the notification that a message carries; null if there is none.
const DaemonNotification* notificationIn(const IPCMessage& message);

// Returns the change that a message reports; absent if it is not a notification, or lacks the
// interface or an address of six bytes.
std::optional<StationChange> stationChangeIn(const IPCMessage& message);

}  // namespace halvane

#endif
