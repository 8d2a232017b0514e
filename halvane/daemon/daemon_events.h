// What the daemon's client tells unasked: stations that come and go, and what becomes of the
// connection.
//
// Plain values; threads as for what they hold.
#ifndef HALVANE_DAEMON_DAEMON_EVENTS_H
#define HALVANE_DAEMON_DAEMON_EVENTS_H

#include <functional>
#include <string>

#include "halvane/base/export.h"
#include "halvane/base/mac_address.h"
#include "halvane/daemon/daemon_result.h"

namespace halvane {

// The states of a client; DaemonClient draws how they follow each other.
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
    std::string interface;  // that hosts the network

    friend bool operator==(const StationChange&, const StationChange&) = default;
};

// "authorized", "joined", "kicked" or "left". Static text.
HALVANE_EXPORT const char* nameOf(StationChange::Kind kind) noexcept;

// Who is told. Each function may be left empty.
// REQUIRES of each: throws nothing; an exception ends the program.
struct DaemonEvents {
    std::function<void(const StationChange& change)> station = nullptr;

    // The client has passed into that state, which is never Connecting or Ending. The client's
    // state() may be another by then.
    std::function<void(DaemonState state)> state = nullptr;

    // The client had asked for notifications, the daemon came back, and the client has asked it
    // anew. Behind that state change; behind the result notifications come again, if the daemon
    // agreed.
    std::function<void(const DaemonResult<void>& result)> renewal = nullptr;
};

}  // namespace halvane

#endif
