#include "tools/halvaned-sim/notification.h"

#include "halvane/base/mac_address.h"
#include "halvane/model/station_change_internal.h"
#include "halvane/service/message_internal.h"

namespace halvane::sim {

std::optional<Happening> happeningFor(std::string_view word) {
    for (const StationNotification& notification : kStationNotifications) {
        if (word == nameOf(notification.kind)) return notification.kind;
    }
    return std::nullopt;
}

StationChange Notification::change() const {
    return {happening, *MacAddress::fromBytes(mac.bytes()), interface};
}

IPCMessage Notification::message() const {
    return stationMessage(happening, interface, mac);
}

}  // namespace halvane::sim
