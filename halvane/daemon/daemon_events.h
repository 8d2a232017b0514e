// What the daemon client reports without being asked: stations that come and go, and changes of the
// connection.
//
// Plain values. Threads: as for their members.
#ifndef HALVANE_DAEMON_DAEMON_EVENTS_H
#define HALVANE_DAEMON_DAEMON_EVENTS_H

#include <functional>

#include "halvane/daemon/daemon_result.h"
#include "halvane/model/station_change.h"  // IWYU pragma: export

namespace halvane {

// The states of a client. DaemonClient documents the transitions.
enum class DaemonState {
    Connecting,  // nothing is known yet
    Connected,   // the daemon is on the bus
    DaemonGone,  // the bus is there, the daemon is not
    BusGone,     // the bus cannot be reached; the client tries again
    Ending,      // the client is being destroyed, or belongs to another process
};

// The functions that receive the events. Each may be empty.
// REQUIRES of each: throws nothing; an exception ends the program.
struct DaemonEvents {
    // A station joined, left, was authorized or was sent away.
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
