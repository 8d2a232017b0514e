// Reads the notifications of the daemon's protocol.
#ifndef HALVANE_DAEMON_NOTIFICATION_INTERNAL_H
#define HALVANE_DAEMON_NOTIFICATION_INTERNAL_H

#include <optional>

#include "halvane/model/station_change.h"
#include "halvane/model/station_change_internal.h"
#include "halvane/platform/bus/ipc_message.h"

namespace halvane {

// Returns the notification that a message carries; null if there is none.
const StationNotification* notificationIn(const IPCMessage& message);

// Returns the change that a message reports; absent if it is not a notification, or lacks the
// interface or an address of six bytes.
std::optional<StationChange> stationChangeIn(const IPCMessage& message);

}  // namespace halvane

#endif
