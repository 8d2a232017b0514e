// All that the simulation knows, and what it answers. Nothing here knows of a bus.
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

// What a reply may have: the limit, without what the bus adds.
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
        Silence,  // there is none, ever
        Error,    // an error of D-Bus
        Gone,     // the daemon leaves the bus without one
    };
    Kind kind = Kind::Reply;
    IPCMessage reply;  // of Kind::Reply
};

// A reply that holds nothing but a status.
IPCMessage statusReply(std::int64_t status);

// Carries out a request of the connection `sender`, unless a fault says otherwise.
Answer answer(Simulation& simulation, const std::string& sender, const IPCMessage& request);

// What subscribers are sent; nothing where notifications are silent.
std::optional<IPCMessage> eventFor(const Simulation& simulation, const Notification& notification);

// The commands of requests, and those among them that are answered with data.
bool isCommand(std::string_view name);
bool isListCommand(std::string_view name);

}  // namespace halvane::sim

#endif
