#include <limits>
#include <utility>

#include "halvane/model/daemon_protocol.h"
#include "halvane/model/station_change_internal.h"
#include "halvane/platform/bus/message_check_internal.h"
#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/service/message_internal.h"

namespace halvane {

namespace {

namespace key = protocol::key;

}  // namespace

IPCMessage statusMessage(std::int64_t status) {
    IPCMessage reply;
    reply.entries().set(key::kStatus, status);
    return reply;
}

IPCMessage statusMessage(DaemonStatus status) {
    return statusMessage(static_cast<std::int64_t>(status));
}

IPCMessage listMessage(const char* key, PropertyListArray list) {
    const auto text = xmlPropertyList(std::move(list));
    if (!text) return statusMessage(DaemonStatus::Unwritable);
    IPCMessage reply = statusMessage(DaemonStatus::Done);
    reply.entries().set(key, ByteBuffer::fromText(*text));
    return reply;
}

IPCMessage loggingMessage(std::string settings) {
    IPCMessage reply;
    reply.entries().set(key::kLogging, std::move(settings));
    return reply;
}

IPCMessage stationMessage(StationChange::Kind kind, std::string_view interface,
                          const ByteBuffer& address) {
    IPCMessage event;
    event.entries().set(key::kCommand,
                        kStationNotifications[static_cast<std::size_t>(kind)].command);
    event.entries().set(key::kStationInterface, std::string(interface));
    event.entries().set(key::kStationAddress, address);
    return event;
}

IPCMessage sendable(IPCMessage reply) {
    if (checkBusMessage(reply, kLargestDaemonReply).refusal.empty()) return reply;
    constexpr std::size_t kAnySize = std::numeric_limits<std::size_t>::max();
    const bool isTooLarge = checkBusMessage(reply, kAnySize).refusal.empty();
    return statusMessage(isTooLarge ? DaemonStatus::TooLarge : DaemonStatus::Unwritable);
}

}  // namespace halvane
