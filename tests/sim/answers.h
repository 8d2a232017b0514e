// The replies and notifications of a simulation, without a bus.
#ifndef TESTS_SIM_ANSWERS_H
#define TESTS_SIM_ANSWERS_H

#include <cstddef>
#include <optional>
#include <string>

#include "halvane/platform/bus/ipc_message.h"
#include "halvane/service/daemon_faults.h"
#include "halvane/service/dispatcher_internal.h"
#include "halvane/service/message_internal.h"

#include "tools/halvaned-sim/notification.h"
#include "tools/halvaned-sim/simulated_backend.h"
#include "tools/halvaned-sim/simulation.h"

namespace halvane::sim {

using Answer = DaemonAnswer;

inline constexpr std::size_t kLargestReply = kLargestDaemonReply;

// The answer to a request of the connection `sender`.
inline Answer answer(Simulation& simulation, const std::string& sender, const IPCMessage& request) {
    SimulatedBackend backend(simulation.world);
    const auto dispatcher = Dispatcher::create(
        {backend, simulation.logging, simulation.subscribers, &simulation.faults},
        [](const IPCMessage&, const std::string&) {});
    Answer answer{.kind = Answer::Kind::Silence};
    dispatcher->handle(sender, request, [&](const Answer& given) { answer = given; });
    return answer;
}

// The message for subscribers; absent if notifications are silent.
inline std::optional<IPCMessage> eventFor(Simulation& simulation,
                                          const Notification& notification) {
    return simulation.faults.event(notification.message());
}

}  // namespace halvane::sim

#endif
