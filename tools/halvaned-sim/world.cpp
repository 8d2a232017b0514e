#include "tools/halvaned-sim/world.h"

#include <algorithm>
#include <utility>

#include "halvane/base/number.h"
#include "halvane/base/property_list_value.h"
#include "halvane/model/interface_builder.h"
#include "halvane/service/hosting_rules_internal.h"
#include "halvane/utils/scan_time.h"

namespace halvane::sim {

namespace {

// IEEE 802.11-2020, 9.4.1.7: deauthenticated because the sender is leaving the network.
constexpr std::uint64_t kReasonLeaving = 3;

std::uint64_t now() {
    return UpTicksToMicroseconds(UpTicks());
}

// A station without any known properties.
HalvaneClient newcomer(const ByteBuffer& mac) {
    auto station = HalvaneClient::initWithMAC(mac);
    station.setDeauthReason(kReasonNone);
    return station;
}

// A locally administered address that a state file is unlikely to hold.
ByteBuffer burstAddress(std::size_t interface, std::uint32_t number) {
    return {0x02,
            0xB0,
            static_cast<std::uint8_t>(interface),
            static_cast<std::uint8_t>(number >> 16),
            static_cast<std::uint8_t>(number >> 8),
            static_cast<std::uint8_t>(number)};
}

// The channel of the BSS; for "any" it is the first one.
std::int64_t hostChannel(const SimulatedInterface& interface) {
    const HalvaneBSSConfig* const hosted =
        interface.hostedSSID ? interface.configs.find(*interface.hostedSSID) : nullptr;
    if (hosted != nullptr && hosted->channel() != 0) return hosted->channel();
    const auto& channels = interface.record.availableChannels();
    return channels.empty() ? 0 : channels.front().channelNumber();
}

}  // namespace

World::World(std::vector<HalvaneDevice> devices, std::vector<SimulatedInterface> interfaces)
    : devices_(std::move(devices)), interfaces_(std::move(interfaces)) {
    for (const SimulatedInterface& interface : interfaces_) {
        indexOfName_.emplace(interface.name(), indexOf(interface));
    }
}

const SimulatedInterface* World::interfaceFor(std::string_view name) const {
    const auto found = indexOfName_.find(name);
    return found != indexOfName_.end() ? &interfaces_[found->second] : nullptr;
}

SimulatedInterface* World::find(std::string_view name) {
    return const_cast<SimulatedInterface*>(std::as_const(*this).interfaceFor(name));
}

std::size_t World::indexOf(const SimulatedInterface& interface) const {
    return static_cast<std::size_t>(&interface - interfaces_.data());
}

// The number of stations in range that have never joined.
std::size_t World::newStationsOf(const SimulatedInterface& interface) const {
    const auto isNew = [&](const HalvaneClient& station) {
        return !stations_.has(interface.name(), station.mac());
    };
    return static_cast<std::size_t>(
        std::count_if(interface.stations.begin(), interface.stations.end(), isNew));
}

DaemonStatus World::addConfig(std::string_view name, const HalvaneBSSConfig& config) {
    SimulatedInterface* const interface = find(name);
    if (interface == nullptr) return DaemonStatus::UnknownInterface;
    if (!hasUsableSSID(config)) return DaemonStatus::BadConfiguration;
    interface->configs.put(config);
    return DaemonStatus::Done;
}

DaemonStatus World::removeConfig(std::string_view name, const HalvaneBSSConfig& config) {
    SimulatedInterface* const interface = find(name);
    if (interface == nullptr) return DaemonStatus::UnknownInterface;
    // SSIDs are unique, so the equal configuration is the one with the same SSID.
    const std::optional<ByteBuffer>& ssid = config.ssid();
    if (!ssid || interface->configs.find(*ssid) == nullptr)
        return DaemonStatus::UnknownConfiguration;
    if (interface->hostedSSID == ssid) takeDown(*interface);
    interface->configs.remove(*ssid);
    return DaemonStatus::Done;
}

DaemonStatus World::enable(std::string_view name) {
    SimulatedInterface* const interface = find(name);
    if (interface == nullptr) return DaemonStatus::UnknownInterface;
    interface->isEnabled = true;
    return DaemonStatus::Done;
}

DaemonStatus World::disable(std::string_view name) {
    SimulatedInterface* const interface = find(name);
    if (interface == nullptr) return DaemonStatus::UnknownInterface;
    takeDown(*interface);
    interface->isEnabled = false;
    return DaemonStatus::Done;
}

DaemonStatus World::changeRole(std::string_view name, const std::string& role) {
    SimulatedInterface* const interface = find(name);
    if (interface == nullptr) return DaemonStatus::UnknownInterface;
    if (!isRole(role)) return DaemonStatus::BadRequest;
    if (!isHostRole(role)) takeDown(*interface);
    interface->record = InterfaceBuilder(interface->record).role(role).build();
    return DaemonStatus::Done;
}

DaemonStatus World::startBSS(std::string_view name) {
    SimulatedInterface* const interface = find(name);
    if (interface == nullptr) return DaemonStatus::UnknownInterface;
    if (!interface->isEnabled) return DaemonStatus::InterfaceDisabled;
    if (!isHostRole(*interface->record.ifRole())) return DaemonStatus::WrongRole;
    if (interface->configs.empty()) return DaemonStatus::NothingToStart;
    if (interface->hostedSSID) return DaemonStatus::Done;
    if (stations_.size() + newStationsOf(*interface) > kMaximumStations) {
        return DaemonStatus::TooManyStations;
    }
    bringUp(*interface, *std::min_element(interface->configs.begin(), interface->configs.end(),
                                          [](const auto& a, const auto& b) {
                                              return a.preferredOrder() < b.preferredOrder();
                                          }));
    return DaemonStatus::Done;
}

DaemonStatus World::stopBSS(std::string_view name) {
    SimulatedInterface* const interface = find(name);
    if (interface == nullptr) return DaemonStatus::UnknownInterface;
    takeDown(*interface);
    return DaemonStatus::Done;
}

void World::bringUp(SimulatedInterface& interface, const HalvaneBSSConfig& config) {
    interface.hostedSSID = config.ssid();
    for (const HalvaneClient& station : interface.stations) {
        admit(interface, station);
        tell(Happening::Authorized, interface, station.mac());
    }
}

void World::takeDown(SimulatedInterface& interface) {
    if (!interface.hostedSSID) return;
    for (const ByteBuffer& mac : stations_.associatedWith(interface.name())) {
        dismiss(*stations_.find(interface.name(), mac), kReasonLeaving);
        tell(Happening::Left, interface, mac);
    }
    interface.hostedSSID.reset();
}

void World::admit(const SimulatedInterface& interface, const HalvaneClient& station) {
    HalvaneClient* client = stations_.find(interface.name(), station.mac());
    if (client == nullptr) {
        client = &stations_.add(interface.name(), station);
        client->setCreateTime(now());
    }
    client->setIsAssociated(true);
    client->setJoinTime(now());
    client->setLeftTime(0);
    client->setChannel(Number(hostChannel(interface)));
    tell(Happening::Joined, interface, station.mac());
}

void World::dismiss(HalvaneClient& client, std::uint64_t reason) {
    client.setIsAssociated(false);
    client.setLeftTime(now());
    client.setDeauthReason(reason);
}

void World::tell(Happening happening, const SimulatedInterface& interface, const ByteBuffer& mac) {
    notifications_.push_back({happening, interface.name(), mac});
}

template <typename Change>
DaemonStatus World::withStation(std::string_view name, const ByteBuffer& mac, Change change) {
    const SimulatedInterface* const interface = find(name);
    if (interface == nullptr) return DaemonStatus::UnknownInterface;
    if (!interface->hostedSSID) return DaemonStatus::NoBSS;
    HalvaneClient* const client = stations_.find(interface->name(), mac);
    if (client == nullptr || !client->isAssociated()) return DaemonStatus::UnknownStation;
    change(*interface, *client);
    return DaemonStatus::Done;
}

DaemonStatus World::join(std::string_view name, const ByteBuffer& mac) {
    const SimulatedInterface* const interface = find(name);
    if (interface == nullptr) return DaemonStatus::UnknownInterface;
    if (!interface->hostedSSID) return DaemonStatus::NoBSS;
    if (stations_.find(interface->name(), mac) == nullptr && stations_.size() >= kMaximumStations) {
        return DaemonStatus::TooManyStations;
    }
    admit(*interface, newcomer(mac));
    return DaemonStatus::Done;
}

DaemonStatus World::authorize(std::string_view name, const ByteBuffer& mac) {
    return withStation(name, mac, [&](const SimulatedInterface& interface, HalvaneClient&) {
        tell(Happening::Authorized, interface, mac);
    });
}

DaemonStatus World::leave(std::string_view name, const ByteBuffer& mac) {
    return withStation(name, mac, [&](const SimulatedInterface& interface, HalvaneClient& client) {
        dismiss(client, kReasonLeaving);
        tell(Happening::Left, interface, mac);
    });
}

DaemonStatus World::kick(std::string_view name, const ByteBuffer& mac, std::uint64_t reason) {
    return withStation(name, mac, [&](const SimulatedInterface& interface, HalvaneClient& client) {
        dismiss(client, reason);
        tell(Happening::Kicked, interface, mac);
    });
}

DaemonStatus World::burst(std::string_view name, std::size_t count) {
    const SimulatedInterface* const interface = find(name);
    if (interface == nullptr) return DaemonStatus::UnknownInterface;
    if (!interface->hostedSSID) return DaemonStatus::NoBSS;
    if (count > kMaximumStations - std::min(kMaximumStations, stations_.size())) {
        return DaemonStatus::TooManyStations;
    }
    while (count > 0) {
        const ByteBuffer mac = burstAddress(indexOf(*interface), burstStations_++);
        if (stations_.find(interface->name(), mac) != nullptr) continue;
        admit(*interface, newcomer(mac));
        --count;
    }
    return DaemonStatus::Done;
}

std::vector<Notification> World::takeNotifications() {
    return std::exchange(notifications_, {});
}

}  // namespace halvane::sim
