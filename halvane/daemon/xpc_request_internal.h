// Turns the replies to the requests of HalvaneXPCClient into results.
#ifndef HALVANE_DAEMON_XPC_REQUEST_INTERNAL_H
#define HALVANE_DAEMON_XPC_REQUEST_INTERNAL_H

#include <optional>
#include <utility>

#include "halvane/base/error.h"
#include "halvane/daemon/xpc_link_internal.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/bus/service_event.h"

namespace halvane {

// Sends a request and returns what `parse` makes of the reply. `error`, if given, receives the
// error that `parse` stores, and is cleared if it stores none.
template <typename Result>
Result xpcQuery(XPCLink& link, IPCMessage message,
                Result (*parse)(const ServiceReply&, std::optional<Error>*),
                std::optional<Error>* error) {
    auto outcome = link.request(std::move(message), [parse](const ServiceReply& reply) {
        std::optional<Error> failure;
        Result result = parse(reply, &failure);
        return std::pair(std::move(result), std::move(failure));
    });
    if (error != nullptr) *error = std::move(outcome.second);
    return std::move(outcome.first);
}

// Sends a request, waits for its reply, ignores the daemon's status and returns true.
inline bool xpcAct(XPCLink& link, IPCMessage message, bool (*parse)(const ServiceReply&)) {
    link.request(std::move(message), parse);
    return true;
}

}  // namespace halvane

#endif
