#include <string>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/mac_address.h"
#include "halvane/daemon/message_internal.h"
#include "halvane/daemon/notification_internal.h"
#include "halvane/model/daemon_protocol.h"
#include "halvane/model/daemon_value_internal.h"

namespace halvane {

const StationNotification* notificationIn(const IPCMessage& message) {
    const auto* command = daemonValue<std::string>(message, protocol::key::kCommand);
    if (command == nullptr) return nullptr;
    for (const StationNotification& notification : kStationNotifications) {
        if (*command == notification.command) return &notification;
    }
    return nullptr;
}

std::optional<StationChange> stationChangeIn(const IPCMessage& message) {
    const auto* notification = notificationIn(message);
    const auto* interface = daemonValue<std::string>(message, protocol::key::kStationInterface);
    const auto* data = daemonValue<ByteBuffer>(message, protocol::key::kStationAddress);
    const auto address = data != nullptr ? MacAddress::fromBytes(data->bytes()) : std::nullopt;
    if (notification == nullptr || interface == nullptr || !address) return std::nullopt;
    return StationChange{notification->kind, *address, *interface};
}

}  // namespace halvane
