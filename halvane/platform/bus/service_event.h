// What arrives over a connection to a service (halvane/platform/bus/service_connection.h): messages
// and errors.
#ifndef HALVANE_PLATFORM_BUS_SERVICE_EVENT_H
#define HALVANE_PLATFORM_BUS_SERVICE_EVENT_H

#include <string>
#include <variant>

#include "halvane/base/result.h"
#include "halvane/platform/bus/ipc_message.h"

namespace halvane {

// The reason why there is no message.
struct ServiceError {
    // What went wrong.
    enum class Kind {
        Invalid,      // the connection is unusable for good: the bus is gone, or cancel() was
                      // called
        Interrupted,  // the service went away; later requests may find it again
        Other,        // the request alone failed
    };

    // Why one request failed, if the kind is Other.
    enum class Cause {
        Unknown,
        NoBus,       // the bus went away before it took the request
        NoService,   // nobody owns the service's name
        Forbidden,   // the bus's policy forbids the request, or the service says that it does
        Refused,     // the service replied with another error, or the bus did
        Unreadable,  // the reply is not a dictionary
        Unsendable,  // the request breaks a rule of the bus and was not sent
    };

    Kind kind = Kind::Other;  // what went wrong

    // The error for people to read: "org.freedesktop.DBus.Error.ServiceUnknown: The name ... was
    // not provided ...".
    std::string text;

    Cause cause = Cause::Unknown;  // why, if that is known
};

// The service has come up: its name has an owner, and events of that owner are accepted.
struct ServiceAppeared {};

// As an event, an error is Invalid or Interrupted.
using ServiceEvent = std::variant<IPCMessage, ServiceAppeared, ServiceError>;
using ServiceReply = Result<IPCMessage, ServiceError>;

}  // namespace halvane

#endif
