// Notifications of stations: requesting them and passing them to the delegate.
#include "halvane/base/byte_buffer.h"
#include "halvane/base/property_list_value.h"
#include "halvane/daemon/message_internal.h"
#include "halvane/daemon/notification_internal.h"
#include "halvane/daemon/requests_internal.h"
#include "halvane/daemon/xpc_client.h"
#include "halvane/daemon/xpc_link_internal.h"
#include "halvane/daemon/xpc_request_internal.h"
#include "halvane/ie/fancy_formatting.h"
#include "halvane/model/daemon_protocol.h"
#include "halvane/model/daemon_value_internal.h"
#include "halvane/model/station_change.h"
#include "halvane/model/station_change_internal.h"
#include "halvane/utils/log.h"

namespace halvane {

namespace {

using Delegate = HalvaneXPCClientDelegate;

// The log text and delegate member for each notification, in the order of kStationNotifications.
struct Notification {
    const char* name;
    const char* function;  // the handler's name as the log shows it
    Delegate::Call Delegate::*call;
};

constexpr Notification kNotifications[] = {
    {kStationNotifications[0].command, "-[HalvaneXPCClient handleNotificationClientAuthorized:]",
     &Delegate::clientAuthorized_forInterface},
    {kStationNotifications[1].command, "-[HalvaneXPCClient handleNotificationClientJoined:]",
     &Delegate::clientJoined_forInterface},
    {kStationNotifications[2].command, "-[HalvaneXPCClient handleNotificationClientKicked:]",
     &Delegate::clientKicked_forInterface},
    {kStationNotifications[3].command, "-[HalvaneXPCClient handleNotificationClientLeft:]",
     &Delegate::clientLeft_forInterface},
};

template <typename... Value>
void log(const Notification& notification, const char* format, Value... value) {
    HALVANE_LOG_AS(&gLogCategory_WiFiXPC, notification.function, kLogLevelError, format, value...);
}

void logAddress(const Notification& notification, const ByteBuffer& mac) {
    if (!LogIsEnabled(&gLogCategory_WiFiXPC, kLogLevelError)) return;
    const PropertyListValue text = FancyFormatting::formattedMAC(mac);
    log(notification, "Client MAC     : %@\n", &text);
}

// The delegate's function, or a receiver of log lines, may destroy the client. The client is not
// used after that.
void handle(const Notification& notification, const IPCMessage& message,
            const std::shared_ptr<const Delegate>& delegate,
            const std::shared_ptr<const XPCLink>& link) {
    log(notification, "Command        : %s\n", notification.name);
    const auto* interfaceName = daemonValue<std::string>(message, protocol::key::kStationInterface);
    if (interfaceName == nullptr) return;
    log(notification, "Interface      : %s\n", interfaceName->c_str());
    const auto* mac = daemonValue<ByteBuffer>(message, protocol::key::kStationAddress);
    if (mac == nullptr) return;
    logAddress(notification, *mac);
    if (delegate && (*delegate).*notification.call && !link->hasEnded()) {
        ((*delegate).*notification.call)(*mac, *interfaceName);
    }
}

}  // namespace

void HalvaneXPCClient::handleNotificationClientAuthorized(const IPCMessage& message) {
    handle(kNotifications[0], message, delegate(), link_);
}

void HalvaneXPCClient::handleNotificationClientJoined(const IPCMessage& message) {
    handle(kNotifications[1], message, delegate(), link_);
}

void HalvaneXPCClient::handleNotificationClientKicked(const IPCMessage& message) {
    handle(kNotifications[2], message, delegate(), link_);
}

void HalvaneXPCClient::handleNotificationClientLeft(const IPCMessage& message) {
    handle(kNotifications[3], message, delegate(), link_);
}

void HalvaneXPCClient::handleNewXPCDictionary(const IPCMessage& message) {
    const auto* notification = notificationIn(message);
    if (notification == nullptr) return;
    switch (notification->kind) {
        case StationChange::Kind::Authorized:
            return handleNotificationClientAuthorized(message);
        case StationChange::Kind::Joined:
            return handleNotificationClientJoined(message);
        case StationChange::Kind::Kicked:
            return handleNotificationClientKicked(message);
        case StationChange::Kind::Left:
            return handleNotificationClientLeft(message);
    }
}

void HalvaneXPCClient::registerNotifications() {
    xpcAct(*link_, requests::subscribe(subscribeAP()).message, registerNotificationsResponse);
}

}  // namespace halvane
