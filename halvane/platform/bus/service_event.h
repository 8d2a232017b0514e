// What comes over the connection to a service (halvane/platform/bus/service_connection.h):
// messages, and errors in their place.
#ifndef HALVANE_PLATFORM_BUS_SERVICE_EVENT_H
#define HALVANE_PLATFORM_BUS_SERVICE_EVENT_H

#include <string>
#include <variant>

#include "halvane/platform/bus/ipc_message.h"

namespace halvane {

// Why there is no message.
struct ServiceError {
    enum class Kind {
        Invalid,      // the connection is of no use any more: the bus is gone, or it was cancelled
        Interrupted,  // the service went away; later requests may find it again
        Other,        // the request alone failed
    };

    // What became of a request alone, where the kind is Other.
    enum class Cause {
        Unknown,
        NoBus,       // the bus went away before it took the request
        NoService,   // nobody owns the service's name
        Refused,     // the service, or the bus for its policy, replied with an error
        Unreadable,  // the reply is no dictionary
        Unsendable,  // the request breaks a rule of the bus, and was not sent
    };

    Kind kind = Kind::Other;

    // For people: "org.freedesktop.DBus.Error.ServiceUnknown: The name ... was not provided ...".
    std::string text;

    Cause cause = Cause::Unknown;
};

// The service has come up: its name has an owner that events are taken from now.
struct ServiceAppeared {};

// An error among the events is Invalid or Interrupted.
using ServiceEvent = std::variant<IPCMessage, ServiceAppeared, ServiceError>;
using ServiceReply = std::variant<IPCMessage, ServiceError>;

}  // namespace halvane

#endif
