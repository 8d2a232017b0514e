#include "tools/halvaned-sim/simulated_backend.h"

#include <cstddef>
#include <string>
#include <utility>

#include "halvane/base/result.h"
#include "halvane/model/daemon_status.h"
#include "halvane/service/backend_reply.h"
#include "halvane/service/message_internal.h"

#include "tools/halvaned-sim/notification.h"

namespace halvane::sim {

void SimulatedBackend::devices(BackendReply<std::vector<HalvaneDevice>> reply) {
    reply(world_.devices());
}

void SimulatedBackend::interfaces(BackendReply<std::vector<HalvaneInterface>> reply) {
    std::vector<HalvaneInterface> list;
    list.reserve(world_.interfaces().size());
    for (const SimulatedInterface& interface : world_.interfaces()) {
        list.push_back(interface.record);
    }
    reply(std::move(list));
}

void SimulatedBackend::channels(std::string_view name,
                                BackendReply<std::vector<HalvaneChannel>> reply) {
    const SimulatedInterface* const interface = world_.interfaceFor(name);
    if (interface == nullptr) return reply(Unexpected(DaemonStatus::UnknownInterface));
    reply(interface->record.availableChannels());
}

void SimulatedBackend::configurations(std::optional<std::string_view> name,
                                      BackendReply<std::vector<HalvaneBSSConfig>> reply) {
    if (name && world_.interfaceFor(*name) == nullptr) {
        return reply(Unexpected(DaemonStatus::UnknownInterface));
    }
    std::vector<HalvaneBSSConfig> list;
    for (const SimulatedInterface& interface : world_.interfaces()) {
        if (name && interface.name() != *name) continue;
        list.insert(list.end(), interface.configs.begin(), interface.configs.end());
    }
    reply(std::move(list));
}

// The reply lists all stations, however many there are.
constexpr std::size_t kListAround = 1024;  // everything around the stations
static_assert(kMaximumStations * kLargestNewcomer + kLargestStationsInRange + kListAround <=
              kLargestDaemonReply);

void SimulatedBackend::stations(BackendReply<std::vector<HalvaneClient>> reply) {
    reply(world_.clients());
}

void SimulatedBackend::add(std::string_view interface, const HalvaneBSSConfig& configuration,
                           BackendReply<void> reply) {
    finish(world_.addConfig(interface, configuration), std::move(reply));
}

void SimulatedBackend::remove(std::string_view interface, const HalvaneBSSConfig& configuration,
                              BackendReply<void> reply) {
    finish(world_.removeConfig(interface, configuration), std::move(reply));
}

void SimulatedBackend::enable(std::string_view interface, BackendReply<void> reply) {
    finish(world_.enable(interface), std::move(reply));
}

void SimulatedBackend::disable(std::string_view interface, BackendReply<void> reply) {
    finish(world_.disable(interface), std::move(reply));
}

void SimulatedBackend::changeRole(std::string_view interface, std::string_view role,
                                  BackendReply<void> reply) {
    finish(world_.changeRole(interface, std::string(role)), std::move(reply));
}

void SimulatedBackend::start(std::string_view interface, BackendReply<void> reply) {
    finish(world_.startBSS(interface), std::move(reply));
}

void SimulatedBackend::stop(std::string_view interface, BackendReply<void> reply) {
    finish(world_.stopBSS(interface), std::move(reply));
}

void SimulatedBackend::kick(std::string_view interface, const MacAddress& station,
                            BackendReply<void> reply) {
    finish(world_.kick(interface, station.buffer(), kReasonUnspecified), std::move(reply));
}

void SimulatedBackend::finish(DaemonStatus status, BackendReply<void> reply) {
    if (status == DaemonStatus::Done) {
        reply({});
    } else {
        reply(Unexpected(status));
    }
    tellAll();
}

void SimulatedBackend::tellAll() {
    for (const Notification& notification : world_.takeNotifications()) {
        tell(notification.change());
    }
}

}  // namespace halvane::sim
