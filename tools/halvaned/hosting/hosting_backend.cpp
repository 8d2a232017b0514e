#include "tools/halvaned/hosting/hosting_backend.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/escaped_text.h"
#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/service/backend_reply.h"
#include "halvane/service/hosting_rules_internal.h"

#include "tools/halvaned/hosting/daemon_logging.h"
#include "tools/halvaned/hosting/hosting_plan.h"
#include "tools/halvaned/hosting/hosting_status.h"
#include "tools/halvaned/radio/device_change.h"
#include "tools/halvaned/radio/device_records.h"

namespace halvane::hosting {

namespace {

// A role is a word, and the state is bounded.
constexpr std::size_t kLongestRole = 64;  // octets

// Every interface has the role that hosts at first.
std::string roleOf(const InterfaceState& state) {
    return state.role.value_or(kHostRole);
}

bool hasHostRole(const InterfaceState& state) {
    return isHostRole(roleOf(state));
}

// All configurations of all interfaces share the state's file, and each change writes all of it.
bool isSmall(const HalvaneBSSConfig& configuration) {
    constexpr std::size_t kLargest = 65536;
    const auto text = xmlPropertyList(configuration.skeletonRepresentation());
    return text && text->size() <= kLargest;
}

std::vector<HalvaneBSSConfig>::iterator findSSID(std::vector<HalvaneBSSConfig>& list,
                                                 const std::optional<ByteBuffer>& ssid) {
    return std::ranges::find_if(list, [&](const auto& each) { return each.ssid() == ssid; });
}

DaemonStatus statusOf(const HostError& error) {
    switch (error.kind) {
        case HostError::Kind::BadPlan:
            return kCannotHost;
        case HostError::Kind::Stopped:
            return kStopped;
        case HostError::Kind::NotReady:
            return DaemonStatus::NoBSS;
        case HostError::Kind::UnknownStation:
            return DaemonStatus::UnknownStation;
        case HostError::Kind::Busy:
        case HostError::Kind::Refused:
        case HostError::Kind::NoAnswer:
            break;
    }
    return kHostapdFailed;
}

void logCountry(const DeviceList& devices, const std::string& name) {
    const DeviceInterface* const interface = devices.find(name);
    if (interface == nullptr) return;
    const auto country = devices.countryOf(*interface);
    logNotice(name + " follows the rules of " + (country ? *country : "no country") + ".");
}

void answer(BackendReply<void>& reply, DaemonStatus status) {
    if (status == DaemonStatus::Done) {
        reply({});
    } else {
        reply(Unexpected(status));
    }
}

}  // namespace

HostingBackend::HostingBackend(sd_event* loop, DeviceSource& source, Settings settings,
                               const HostSettings& host)
    : source_(source),
      settings_(std::move(settings)),
      saved_(settings_.stateFile),
      networks_(loop, host, [this](const StationChange& change) { tell(change); }),
      retries_(loop, host.firstPause, host.longestPause,
               [this](const std::string& interface) { resume(interface); }) {}

// --- Devices ---

Result<void, std::string> HostingBackend::load() {
    const auto damage = saved_.load();
    if (!damage) return Unexpected(damage.error());
    if (*damage) logError(**damage);
    const auto update = source_.start();
    if (!update) return Unexpected(update.error());
    if (!source_.isAvailable()) {
        logNotice("The kernel has no nl80211, so there are no devices.");
    }
    take(*update);
    return {};
}

void HostingBackend::updateDevices() {
    take(source_.update());
}

void HostingBackend::take(const DeviceUpdate& update) {
    for (const std::string& fault : update.faults) logError(fault);
    using Kind = DeviceChange::Kind;
    for (const DeviceChange& change : update.changes) {
        if (change.kind == Kind::Country) logCountry(source_.devices(), change.interface);
        if (change.kind == Kind::Went) {
            networks_.noteGone(change.interface);
            networks_.stop(change.interface, [] {});
        }
        if (change.kind == Kind::Came) networks_.noteCame(change.interface);
        if (change.kind == Kind::Came && !isText(change.interface)) {
            logNotice(escapedText(change.interface) + " is left out: its name is no text.");
        }
        if (change.kind == Kind::Renamed) networks_.stop(change.formerName, [] {});
    }
    // Names may have changed places, so this comes behind all ends.
    for (const DeviceChange& change : update.changes) {
        if (change.kind == Kind::Came || change.kind == Kind::Renamed) resume(change.interface);
    }
}

// Hosts again what a client had started, before a restart of the daemon or of the device.
void HostingBackend::resume(const std::string& name) {
    const DeviceInterface* const interface = find(name);
    if (interface == nullptr || !saved_.of(name).isStarted) return retries_.forget(name);
    const DaemonStatus status =
        bringUp(*interface, [this, name](const auto& result) { resumed(name, result); });
    if (status == DaemonStatus::Done) return;
    logError(name + " cannot host as it did before.");
    retries_.later(name);
}

// A network that clients were told is started is tried again until they stop it.
void HostingBackend::resumed(const std::string& interface, const Result<void, HostError>& result) {
    if (result) return retries_.forget(interface);
    logError(interface + ": " + result.error().text);
    if (result.error().kind != HostError::Kind::Stopped) retries_.later(interface);
}

// hostapd's own interfaces are no devices of clients.
const DeviceInterface* HostingBackend::find(std::string_view name) const {
    return networks_.isMade(name) ? nullptr : source_.devices().find(name);
}

// --- Lists ---

void HostingBackend::devices(BackendReply<std::vector<HalvaneDevice>> reply) {
    reply(deviceRecords(source_.devices()));
}

void HostingBackend::interfaces(BackendReply<std::vector<HalvaneInterface>> reply) {
    std::vector<HalvaneInterface> list;
    for (const DeviceInterface& interface : source_.devices().interfaces) {
        if (networks_.isMade(interface.name) || !isText(interface.name)) continue;
        list.push_back(interfaceRecord(source_.devices(), interface,
                                       roleOf(saved_.of(interface.name)), source_.subsystem()));
    }
    reply(std::move(list));
}

void HostingBackend::channels(std::string_view name,
                              BackendReply<std::vector<HalvaneChannel>> reply) {
    const DeviceInterface* const interface = find(name);
    if (interface == nullptr) return reply(Unexpected(DaemonStatus::UnknownInterface));
    reply(channelRecords(source_.devices(), *interface));
}

void HostingBackend::configurations(std::optional<std::string_view> name,
                                    BackendReply<std::vector<HalvaneBSSConfig>> reply) {
    if (name) {
        if (find(*name) == nullptr) return reply(Unexpected(DaemonStatus::UnknownInterface));
        return reply(saved_.of(std::string(*name)).configurations);
    }
    std::vector<HalvaneBSSConfig> list;
    for (const auto& [interface, state] : saved_.state().interfaces) {
        if (find(interface) == nullptr) continue;
        list.insert(list.end(), state.configurations.begin(), state.configurations.end());
    }
    reply(std::move(list));
}

void HostingBackend::stations(BackendReply<std::vector<HalvaneClient>> reply) {
    // A std::function is copied, and a reply cannot be.
    auto kept = std::make_shared<BackendReply<std::vector<HalvaneClient>>>(std::move(reply));
    networks_.clients([kept](std::vector<HalvaneClient> list) { (*kept)(std::move(list)); });
}

// --- Actions ---

void HostingBackend::add(std::string_view name, const HalvaneBSSConfig& configuration,
                         BackendReply<void> reply) {
    if (find(name) == nullptr) return reply(Unexpected(DaemonStatus::UnknownInterface));
    if (!hasUsableSSID(configuration)) return reply(Unexpected(DaemonStatus::BadConfiguration));
    if (!isSmall(configuration)) return reply(Unexpected(kTooLarge));
    const std::string interface(name);
    InterfaceState state = saved_.of(interface);
    const auto same = findSSID(state.configurations, configuration.ssid());
    if (same != state.configurations.end()) {
        *same = configuration;
    } else if (state.configurations.size() >= settings_.configurations) {
        return reply(Unexpected(kTooManyConfigurations));
    } else {
        state.configurations.push_back(configuration);
    }
    saveAndReply(interface, std::move(state), std::move(reply));
}

void HostingBackend::remove(std::string_view name, const HalvaneBSSConfig& configuration,
                            BackendReply<void> reply) {
    if (find(name) == nullptr) return reply(Unexpected(DaemonStatus::UnknownInterface));
    const std::string interface(name);
    InterfaceState state = saved_.of(interface);
    const auto found = findSSID(state.configurations, configuration.ssid());
    if (found == state.configurations.end()) {
        return reply(Unexpected(DaemonStatus::UnknownConfiguration));
    }
    const bool wasHosted = networks_.hosts(interface, configuration.ssid());
    state.configurations.erase(found);
    state.isStarted = state.isStarted && !state.configurations.empty();
    if (!wasHosted) return saveAndReply(interface, std::move(state), std::move(reply));
    if (!saved_.set(interface, std::move(state))) return answer(reply, kNotSaved);
    auto kept = std::make_shared<BackendReply<void>>(std::move(reply));
    networks_.stop(interface, [this, interface, kept] {
        (*kept)({});
        resume(interface);  // with the others
    });
}

void HostingBackend::enable(std::string_view name, BackendReply<void> reply) {
    if (find(name) == nullptr) return reply(Unexpected(DaemonStatus::UnknownInterface));
    const std::string interface(name);
    InterfaceState state = saved_.of(interface);
    state.isEnabled = true;
    saveAndReply(interface, std::move(state), std::move(reply));
}

void HostingBackend::disable(std::string_view name, BackendReply<void> reply) {
    if (find(name) == nullptr) return reply(Unexpected(DaemonStatus::UnknownInterface));
    const std::string interface(name);
    InterfaceState state = saved_.of(interface);
    state.isEnabled = false;
    state.isStarted = false;
    saveAndStop(interface, std::move(state), std::move(reply));
}

void HostingBackend::changeRole(std::string_view name, std::string_view role,
                                BackendReply<void> reply) {
    if (find(name) == nullptr) return reply(Unexpected(DaemonStatus::UnknownInterface));
    if (role.size() > kLongestRole || !isRole(std::string(role))) {
        return reply(Unexpected(DaemonStatus::BadRequest));
    }
    const std::string interface(name);
    InterfaceState state = saved_.of(interface);
    state.role = std::string(role);
    if (hasHostRole(state)) return saveAndReply(interface, std::move(state), std::move(reply));
    state.isStarted = false;
    saveAndStop(interface, std::move(state), std::move(reply));
}

void HostingBackend::start(std::string_view name, BackendReply<void> reply) {
    const DeviceInterface* const interface = find(name);
    if (interface == nullptr) return reply(Unexpected(DaemonStatus::UnknownInterface));
    auto kept = std::make_shared<BackendReply<void>>(std::move(reply));
    const DaemonStatus status =
        bringUp(*interface, [this, kept, started = std::string(name)](const auto& result) {
            this->started(started, result, *kept);
        });
    if (status != DaemonStatus::Done) answer(*kept, status);
}

DaemonStatus HostingBackend::bringUp(const DeviceInterface& interface, Host::Done done) {
    const InterfaceState& state = saved_.of(interface.name);
    if (!state.isEnabled) return DaemonStatus::InterfaceDisabled;
    if (!hasHostRole(state)) return DaemonStatus::WrongRole;
    if (state.configurations.empty()) return DaemonStatus::NothingToStart;
    const auto plan = hostingPlan(source_.devices(), interface, state, settings_,
                                  [this, &interface](const std::string& each) {
                                      return !networks_.mayMake(each, interface.name);
                                  });
    if (!plan) {
        logError(interface.name + ": " + plan.error());
        return kCannotHost;
    }
    networks_.start(interface.name, *plan, std::move(done));
    return DaemonStatus::Done;
}

void HostingBackend::started(const std::string& interface, const Result<void, HostError>& result,
                             BackendReply<void>& reply) {
    if (!result) {
        logError(interface + ": " + result.error().text);
        // It may have been hosting, or about to, when the client asked.
        const bool isWanted = saved_.of(interface).isStarted;
        if (isWanted && result.error().kind != HostError::Kind::Stopped) retries_.later(interface);
        return answer(reply, statusOf(result.error()));
    }
    // Another who waited for the same start may have failed to save it.
    if (!networks_.isUp(interface)) return answer(reply, kStopped);
    InterfaceState state = saved_.of(interface);
    state.isStarted = true;
    if (saved_.set(interface, std::move(state))) {
        retries_.forget(interface);
        return reply({});
    }
    // It would not be started again after a restart, so it is not started now.
    networks_.stop(interface, [] {});
    answer(reply, kNotSaved);
}

void HostingBackend::stop(std::string_view name, BackendReply<void> reply) {
    if (find(name) == nullptr) return reply(Unexpected(DaemonStatus::UnknownInterface));
    const std::string interface(name);
    InterfaceState state = saved_.of(interface);
    state.isStarted = false;
    saveAndStop(interface, std::move(state), std::move(reply));
}

void HostingBackend::kick(std::string_view name, const MacAddress& station,
                          BackendReply<void> reply) {
    if (find(name) == nullptr) return reply(Unexpected(DaemonStatus::UnknownInterface));
    auto kept = std::make_shared<BackendReply<void>>(std::move(reply));
    networks_.kick(std::string(name), station, [kept](const auto& result) {
        answer(*kept, result ? DaemonStatus::Done : statusOf(result.error()));
    });
}

void HostingBackend::saveAndReply(const std::string& interface, InterfaceState state,
                                  BackendReply<void> reply) {
    answer(reply, saved_.set(interface, std::move(state)) ? DaemonStatus::Done : kNotSaved);
}

void HostingBackend::saveAndStop(const std::string& interface, InterfaceState state,
                                 BackendReply<void> reply) {
    if (!saved_.set(interface, std::move(state))) return answer(reply, kNotSaved);
    auto kept = std::make_shared<BackendReply<void>>(std::move(reply));
    networks_.stop(interface, [kept] { (*kept)({}); });
}

}  // namespace halvane::hosting
