// What happens to the stations of a hosted network, as a daemon tells it and its clients learn it.
//
// A plain value. Threads: as for its members.
#ifndef HALVANE_MODEL_STATION_CHANGE_H
#define HALVANE_MODEL_STATION_CHANGE_H

#include <string>

#include "halvane/base/export.h"
#include "halvane/base/mac_address.h"

namespace halvane {

// What happened to a station of a hosted network.
struct StationChange {
    // What happened.
    enum class Kind { Authorized, Joined, Kicked, Left };

    Kind kind = Kind::Joined;  // what happened
    MacAddress address;        // of the station
    std::string interface;     // the interface that hosts the network

    friend bool operator==(const StationChange&, const StationChange&) = default;
};

// "authorized", "joined", "kicked" or "left". Static text.
HALVANE_EXPORT const char* nameOf(StationChange::Kind kind) noexcept;

}  // namespace halvane

#endif
