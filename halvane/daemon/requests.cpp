#include <cstddef>
#include <cstdint>
#include <initializer_list>

#include "halvane/base/number.h"
#include "halvane/base/result.h"
#include "halvane/daemon/requests_internal.h"
#include "halvane/model/daemon_protocol.h"
#include "halvane/model/daemon_value_internal.h"
#include "halvane/platform/plist/xml_property_list.h"

namespace halvane {

namespace {

using Kind = DaemonError::Kind;
namespace command = protocol::command;
namespace key = protocol::key;

// --- Messages ---

// A key of a request and its value. A key without a value is left out.
using Entry = std::pair<const char*, std::optional<PropertyListValue>>;

IPCMessage messageOf(const char* command, std::initializer_list<Entry> entries = {}) {
    IPCMessage message;
    message.entries().set(key::kCommand, command);
    for (const auto& [key, value] : entries) {
        if (value) message.entries().set(key, *value);
    }
    return message;
}

PropertyListValue textOf(std::string_view text) {
    return std::string(text);
}

// Returns the configuration as data. Without an XML form it becomes a null value, which cannot be
// sent.
PropertyListValue dataOf(const HalvaneBSSConfig& configuration) {
    const auto xml = xmlPropertyList(configuration.skeletonRepresentation());
    return xml ? PropertyListValue(ByteBuffer::fromText(*xml)) : PropertyListValue();
}

// --- Replies ---

// Absent if "status" is not an integer; such a reply breaks the protocol.
std::optional<std::int64_t> statusIn(const IPCMessage& reply) {
    const auto* number = daemonValue<Number>(reply, key::kStatus);
    if (number == nullptr || number->isReal()) return std::nullopt;
    return number->exactInt64();
}

DaemonResult<void> readStatus(const IPCMessage& reply) {
    const auto status = statusIn(reply);
    if (!status) return Unexpected(DaemonError{Kind::Undecodable});
    if (*status != 0) return Unexpected(DaemonError{Kind::Refused, *status});
    return {};
}

template <typename Record>
DaemonResult<std::vector<Record>> readList(const IPCMessage& reply) {
    if (const auto done = readStatus(reply); !done) return Unexpected(done.error());
    auto records = recordsIn<Record>(reply);
    if (!records) return Unexpected(DaemonError{Kind::Undecodable});
    return std::move(*records);
}

// The settings are the result whatever the status is. The reply may lack a status.
DaemonResult<std::string> readSettings(const IPCMessage& reply) {
    if (const auto* settings = daemonValue<std::string>(reply, key::kLogging)) return *settings;
    const auto status = statusIn(reply).value_or(0);
    if (status != 0) return Unexpected(DaemonError{Kind::Refused, status});
    return Unexpected(DaemonError{Kind::Undecodable});
}

DaemonRequest<void> interfaceAction(const char* command, std::string_view interface) {
    return {messageOf(command, {{key::kInterface, textOf(interface)}}), readStatus};
}

DaemonRequest<void> configurationAction(const char* command, std::string_view interface,
                                        const HalvaneBSSConfig& configuration) {
    return {messageOf(command, {{key::kInterface, textOf(interface)},
                                {key::kConfiguration, dataOf(configuration)}}),
            readStatus};
}

}  // namespace

namespace requests {

DaemonRequest<std::vector<HalvaneDevice>> devices() {
    return {messageOf(command::kDevices), readList<HalvaneDevice>};
}

DaemonRequest<std::vector<HalvaneInterface>> interfaces() {
    return {messageOf(command::kInterfaces), readList<HalvaneInterface>};
}

DaemonRequest<std::vector<HalvaneChannel>> channels(std::string_view interface) {
    return {messageOf(command::kChannels, {{key::kInterface, textOf(interface)}}),
            readList<HalvaneChannel>};
}

DaemonRequest<std::vector<HalvaneBSSConfig>> configurations(
    std::optional<std::string_view> interface) {
    std::optional<PropertyListValue> name;
    if (interface) name = textOf(*interface);
    return {messageOf(command::kConfigurations, {{key::kInterface, std::move(name)}}),
            readList<HalvaneBSSConfig>};
}

DaemonRequest<std::vector<HalvaneClient>> stations() {
    return {messageOf(command::kStations), readList<HalvaneClient>};
}

DaemonRequest<void> add(std::string_view interface, const HalvaneBSSConfig& configuration) {
    return configurationAction(command::kAdd, interface, configuration);
}

DaemonRequest<void> remove(std::string_view interface, const HalvaneBSSConfig& configuration) {
    return configurationAction(command::kRemove, interface, configuration);
}

DaemonRequest<void> enable(std::string_view interface) {
    return interfaceAction(command::kEnable, interface);
}

DaemonRequest<void> disable(std::string_view interface) {
    return interfaceAction(command::kDisable, interface);
}

DaemonRequest<void> role(std::string_view interface, std::string_view role) {
    return {messageOf(command::kRole,
                      {{key::kInterface, textOf(interface)}, {key::kRole, textOf(role)}}),
            readStatus};
}

DaemonRequest<void> start(std::string_view interface) {
    return interfaceAction(command::kStart, interface);
}

DaemonRequest<void> stop(std::string_view interface) {
    return interfaceAction(command::kStop, interface);
}

DaemonRequest<void> kick(std::string_view interface, const MacAddress& station) {
    return {messageOf(command::kKick, {{key::kInterface, textOf(interface)},
                                       {key::kStationAddress, station.buffer()}}),
            readStatus};
}

DaemonRequest<void> subscribe(bool isWanted) {
    return {messageOf(command::kSubscribe, {{key::kWantsNotifications, isWanted}}), readStatus};
}

// The keys are the names of the log categories.
DaemonRequest<void> setLogging(const DaemonLogControls& controls) {
    IPCMessage message = messageOf(command::kSetLogging);
    for (std::size_t i = 0; i < controls.size(); ++i) {
        if (controls[i]) message.entries().set(std::string(kDaemonLogCategories[i]), *controls[i]);
    }
    return {std::move(message), readStatus};
}

DaemonRequest<std::string> logging() {
    return {messageOf(command::kLogging), readSettings};
}

}  // namespace requests

}  // namespace halvane
