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

    Kind kind = Kind::Other;

    // For people: "org.freedesktop.DBus.Error.ServiceUnknown: The name ... was not provided ...".
    std::string text;
};

// The service has come up: its name has an owner that events are taken from now.
struct ServiceAppeared {};

// An error among the events is Invalid or Interrupted.
using ServiceEvent = std::variant<IPCMessage, ServiceAppeared, ServiceError>;
using ServiceReply = std::variant<IPCMessage, ServiceError>;

}  // namespace halvane

#endif
