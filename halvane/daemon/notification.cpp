#include <string>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/mac_address.h"
#include "halvane/daemon/message_internal.h"
#include "halvane/daemon/notification_internal.h"

namespace halvane {

const char* nameOf(StationChange::Kind kind) noexcept {
    switch (kind) {
        case StationChange::Kind::Authorized:
            return "authorized";
        case StationChange::Kind::Joined:
            return "joined";
        case StationChange::Kind::Kicked:
            return "kicked";
        case StationChange::Kind::Left:
            return "left";
    }
    return "unknown";
}

const DaemonNotification* notificationIn(const IPCMessage& message) {
    const auto* command = daemonValue<std::string>(message, "command");
    if (command == nullptr) return nullptr;
    for (const DaemonNotification& notification : kDaemonNotifications) {
        if (*command == notification.command) return &notification;
    }
    return nullptr;
}

std::optional<StationChange> stationChangeIn(const IPCMessage& message) {
    const auto* notification = notificationIn(message);
    const auto* interface = daemonValue<std::string>(message, "BSDName");
    const auto* data = daemonValue<ByteBuffer>(message, "MAC");
    const auto address = data != nullptr ? MacAddress::fromBytes(data->bytes()) : std::nullopt;
    if (notification == nullptr || interface == nullptr || !address) return std::nullopt;
    return StationChange{notification->kind, *address, *interface};
}

}  // namespace halvane
