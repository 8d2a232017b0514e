// The notifications of the daemon's protocol.
#ifndef HALVANE_MODEL_STATION_CHANGE_INTERNAL_H
#define HALVANE_MODEL_STATION_CHANGE_INTERNAL_H

#include "halvane/model/daemon_protocol.h"
#include "halvane/model/station_change.h"

namespace halvane {

struct StationNotification {
    StationChange::Kind kind;
    const char* command;  // as the message carries it
};

// In the order of StationChange::Kind. A client compares a message's command with them in this
// order.
inline constexpr StationNotification kStationNotifications[] = {
    {StationChange::Kind::Authorized, protocol::notification::kAuthorized},
    {StationChange::Kind::Joined, protocol::notification::kJoined},
    {StationChange::Kind::Kicked, protocol::notification::kKicked},
    {StationChange::Kind::Left, protocol::notification::kLeft},
};

}  // namespace halvane

#endif
