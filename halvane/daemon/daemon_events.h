// What the daemon client reports without being asked: stations that come and go, and changes of the
// connection.
//
// Plain values. Threads: as for their members.
#ifndef HALVANE_DAEMON_DAEMON_EVENTS_H
#define HALVANE_DAEMON_DAEMON_EVENTS_H

#include <functional>
#include <string>

#include "halvane/base/export.h"
#include "halvane/base/mac_address.h"
#include "halvane/daemon/daemon_result.h"

namespace halvane {

// The states of a client. DaemonClient documents the transitions.
enum class DaemonState {
    Connecting,  // nothing is known yet
    Connected,   // the daemon is on the bus
    DaemonGone,  // the bus is there, the daemon is not
    BusGone,     // the bus cannot be reached; the client tries again
    Ending,      // the client is being destroyed, or belongs to another process
};

// What happened to a station of a hosted network.
struct StationChange {
    enum class Kind { Authorized, Joined, Kicked, Left };

    Kind kind = Kind::Joined;
    MacAddress address;
    std::string interface;  // the interface that hosts the network

    friend bool operator==(const StationChange&, const StationChange&) = default;
};

// "authorized", "joined", "kicked" or "left". Static text.
HALVANE_EXPORT const char* nameOf(StationChange::Kind kind) noexcept;

// The functions that receive the events. Each may be empty.
// REQUIRES of each: throws nothing; an exception ends the program.
struct DaemonEvents {
    std::function<void(const StationChange& change)> station = nullptr;

    // The client has entered `state`, which is never Connecting or Ending. state() may already
    // return a later one.
    std::function<void(DaemonState state)> state = nullptr;

    // The daemon came back, and the client asked it again for notifications, which the program
    // wants. `result` tells whether the daemon agreed; if so, notifications come again. It is
    // OutOfMemory also if memory is too short to ask; the program may then call subscribe(). The
    // call follows that of the state change.
    std::function<void(const DaemonResult<void>& result)> renewal = nullptr;
};

}  // namespace halvane

#endif
