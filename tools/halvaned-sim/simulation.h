// The state of the simulation, and its replies. This code does not know of a bus.
#ifndef TOOLS_HALVANED_SIM_SIMULATION_H
#define TOOLS_HALVANED_SIM_SIMULATION_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/bus/service_connection.h"

#include "tools/halvaned-sim/faults.h"
#include "tools/halvaned-sim/logging_settings.h"
#include "tools/halvaned-sim/subscribers.h"
#include "tools/halvaned-sim/world.h"

namespace halvane::sim {

// The largest reply: the limit of the bus, without what the bus adds.
inline constexpr std::size_t kLargestReply = kServiceMessageLimit - 2048;

struct Simulation {
    World world;
    LoggingSettings logging;
    Subscribers subscribers;
    Faults faults;
};

struct Answer {
    enum class Kind {
        Reply,
        Silence,  // there is never a reply
        Error,    // an error of D-Bus
        Gone,     // the daemon leaves the bus without a reply
    };
    Kind kind = Kind::Reply;
    IPCMessage reply;  // of Kind::Reply
};

// A reply that holds nothing but a status.
IPCMessage statusReply(std::int64_t status);

// Carries out a request of the connection `sender`, unless a fault prevents it.
Answer answer(Simulation& simulation, const std::string& sender, const IPCMessage& request);

// The message for subscribers; absent if notifications are silent.
std::optional<IPCMessage> eventFor(const Simulation& simulation, const Notification& notification);

// The commands of requests, and those of them whose reply has data.
bool isCommand(std::string_view name);
bool isListCommand(std::string_view name);

}  // namespace halvane::sim

#endif
