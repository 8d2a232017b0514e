// The values of "status" in a daemon's replies.
//
// A client may rely on 0 alone: any other value is an error, and a daemon may define its own. The
// daemons of this library use the numbers below, and distinguish their own by kFirstOwnStatus.
#ifndef HALVANE_MODEL_DAEMON_STATUS_H
#define HALVANE_MODEL_DAEMON_STATUS_H

#include <cstdint>
#include <string_view>

#include "halvane/base/cxx20.h"

namespace halvane {

enum class DaemonStatus : std::int64_t {
    Done = 0,
    UnknownCommand = 1,
    BadRequest = 2,  // a key is missing, or its value has a wrong type or is of no use
    UnknownInterface = 3,
    BadConfiguration = 4,      // no property list, no dictionary, or no SSID of 1 to 32 bytes
    UnknownConfiguration = 5,  // the interface does not have it
    InterfaceDisabled = 6,
    WrongRole = 7,       // the interface's role does not host networks
    NothingToStart = 8,  // the interface has no configuration
    NoBSS = 9,           // the interface hosts no network
    UnknownStation = 10,
    TooManyStations = 11,
    TooLarge = 12,            // the reply would exceed what a bus accepts
    Busy = 13,                // too many requests wait for the daemon
    TooManySubscribers = 14,  // so many connections get notifications already
    Lost = 15,                // the daemon dropped the request, and may have acted on it
    Unwritable = 16,          // the reply holds text that the protocol cannot carry
};

// The least status that a daemon may define for itself. Those below are reserved for this list.
// Negative ones are free too, except -6700, which HalvaneXPCClient returns for a failed request.
inline constexpr std::int64_t kFirstOwnStatus = 100;

// "there is no such interface": the status as a clause for people. Static text, and empty for a
// daemon's own status.
constexpr std::string_view textOf(DaemonStatus status) {
    switch (status) {
        case DaemonStatus::Done:
            return "done";
        case DaemonStatus::UnknownCommand:
            return "there is no such command";
        case DaemonStatus::BadRequest:
            return "a key is missing, or its value is of no use";
        case DaemonStatus::UnknownInterface:
            return "there is no such interface";
        case DaemonStatus::BadConfiguration:
            return "that is no configuration with an SSID of 1 to 32 bytes";
        case DaemonStatus::UnknownConfiguration:
            return "the interface has no such configuration";
        case DaemonStatus::InterfaceDisabled:
            return "the interface is disabled";
        case DaemonStatus::WrongRole:
            return "the interface's role is not AP";
        case DaemonStatus::NothingToStart:
            return "the interface has no configuration to start";
        case DaemonStatus::NoBSS:
            return "the interface hosts no BSS";
        case DaemonStatus::UnknownStation:
            return "no such station is associated";
        case DaemonStatus::TooManyStations:
            return "there would be too many stations";
        case DaemonStatus::TooLarge:
            return "the reply is larger than a bus accepts";
        case DaemonStatus::Busy:
            return "too many requests are waiting";
        case DaemonStatus::TooManySubscribers:
            return "too many connections have subscribed";
        case DaemonStatus::Lost:
            return "the daemon dropped the request";
        case DaemonStatus::Unwritable:
            return "the reply holds text that cannot be written";
    }
    return "";
}

}  // namespace halvane

#endif
