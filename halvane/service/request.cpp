#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/mac_address.h"
#include "halvane/base/property_list_value.h"
#include "halvane/model/daemon_protocol.h"
#include "halvane/model/daemon_value_internal.h"
#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/platform/plist/xml_property_list_reader.h"
#include "halvane/service/request_internal.h"

namespace halvane {

namespace {

namespace command = protocol::command;
namespace key = protocol::key;

DaemonStatus readNothing(const IPCMessage&, DecodedRequest&) {
    return DaemonStatus::Done;
}

DaemonStatus readInterface(const IPCMessage& message, DecodedRequest& request) {
    const auto* const name = daemonValue<std::string>(message, key::kInterface);
    if (name == nullptr) return DaemonStatus::BadRequest;
    request.interface = *name;
    return DaemonStatus::Done;
}

// An interface that is no string is not the same as none.
DaemonStatus readAnyInterface(const IPCMessage& message, DecodedRequest& request) {
    if (message.entries().find(key::kInterface) == nullptr) return DaemonStatus::Done;
    return readInterface(message, request);
}

DaemonStatus readRole(const IPCMessage& message, DecodedRequest& request) {
    const auto* const role = daemonValue<std::string>(message, key::kRole);
    if (role == nullptr) return DaemonStatus::BadRequest;
    request.role = *role;
    return readInterface(message, request);
}

DaemonStatus readStation(const IPCMessage& message, DecodedRequest& request) {
    const auto* const data = daemonValue<ByteBuffer>(message, key::kStationAddress);
    const auto address = data != nullptr ? MacAddress::fromBytes(data->bytes()) : std::nullopt;
    if (!address) return DaemonStatus::BadRequest;
    request.station = *address;
    return readInterface(message, request);
}

// XML 1.1 has characters that no list of configurations could hold, so the text must be writable
// again.
DaemonStatus readConfiguration(const IPCMessage& message, DecodedRequest& request) {
    const auto* const data = daemonValue<ByteBuffer>(message, key::kConfiguration);
    if (data == nullptr) return DaemonStatus::BadRequest;
    if (const auto status = readInterface(message, request); status != DaemonStatus::Done) {
        return status;
    }
    const auto bytes = data->bytes();
    const auto list =
        propertyListFromXml({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    const auto* const skeleton = list ? list->as<PropertyListDictionary>() : nullptr;
    if (skeleton == nullptr || !xmlPropertyList(*list)) return DaemonStatus::BadConfiguration;
    request.configuration = HalvaneBSSConfig::initWithSkeletonRepresentation(*skeleton);
    return DaemonStatus::Done;
}

DaemonStatus readControls(const IPCMessage& message, DecodedRequest& request) {
    for (std::size_t i = 0; i < kDaemonLogCategories.size(); ++i) {
        if (message.entries().find(kDaemonLogCategories[i]) == nullptr) continue;
        const auto* const control = daemonValue<std::string>(message, kDaemonLogCategories[i]);
        if (control == nullptr) return DaemonStatus::BadRequest;
        request.controls[i] = *control;
    }
    return DaemonStatus::Done;
}

DaemonStatus readSubscription(const IPCMessage& message, DecodedRequest& request) {
    const auto* const wants = daemonValue<bool>(message, key::kWantsNotifications);
    if (wants == nullptr) return DaemonStatus::BadRequest;
    request.wantsNotifications = *wants;
    return DaemonStatus::Done;
}

// In the order of the enumeration.
constexpr CommandInfo kCommands[] = {
    {command::kDevices, DaemonCommand::Devices, readNothing},
    {command::kInterfaces, DaemonCommand::Interfaces, readNothing},
    {command::kChannels, DaemonCommand::Channels, readInterface},
    {command::kConfigurations, DaemonCommand::Configurations, readAnyInterface},
    {command::kStations, DaemonCommand::Stations, readNothing},
    {command::kAdd, DaemonCommand::Add, readConfiguration},
    {command::kRemove, DaemonCommand::Remove, readConfiguration},
    {command::kEnable, DaemonCommand::Enable, readInterface},
    {command::kDisable, DaemonCommand::Disable, readInterface},
    {command::kRole, DaemonCommand::Role, readRole},
    {command::kStart, DaemonCommand::Start, readInterface},
    {command::kStop, DaemonCommand::Stop, readInterface},
    {command::kKick, DaemonCommand::Kick, readStation},
    {command::kSetLogging, DaemonCommand::SetLogging, readControls},
    {command::kLogging, DaemonCommand::Logging, readNothing},
    {command::kSubscribe, DaemonCommand::Subscribe, readSubscription},
};

}  // namespace

const CommandInfo* commandFor(std::string_view name) {
    const auto* const found = std::ranges::find_if(
        kCommands, [&](const CommandInfo& command) { return command.name == name; });
    return found != std::end(kCommands) ? found : nullptr;
}

bool isList(DaemonCommand command) {
    return command <= DaemonCommand::Stations;
}

bool isForBackend(DaemonCommand command) {
    return command <= DaemonCommand::Kick;
}

Result<const CommandInfo*, DaemonStatus> commandIn(const IPCMessage& message) {
    const auto* const name = daemonValue<std::string>(message, key::kCommand);
    if (name == nullptr) return Unexpected(DaemonStatus::BadRequest);
    const CommandInfo* const command = commandFor(*name);
    if (command == nullptr) return Unexpected(DaemonStatus::UnknownCommand);
    return command;
}

Result<DecodedRequest, DaemonStatus> decoded(const CommandInfo& command,
                                             const IPCMessage& message) {
    DecodedRequest request{.command = command.command};
    const DaemonStatus status = command.read(message, request);
    if (status != DaemonStatus::Done) return Unexpected(status);
    return request;
}

}  // namespace halvane
