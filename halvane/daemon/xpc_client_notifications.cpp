// Notifications of stations: asking for them, and handing them to the delegate.
#include "halvane/base/byte_buffer.h"
#include "halvane/base/property_list_value.h"
#include "halvane/daemon/xpc_client.h"
#include "halvane/daemon/xpc_link_internal.h"
#include "halvane/daemon/xpc_message_internal.h"
#include "halvane/daemon/xpc_request_internal.h"
#include "halvane/ie/fancy_formatting.h"
#include "halvane/model/daemon_service.h"
#include "halvane/utils/log.h"

namespace halvane {

namespace {

using Delegate = HalvaneXPCClientDelegate;

// X(event, Event): in the order in which a message's name is compared with theirs.
#define HALVANE_XPC_NOTIFICATIONS(X) \
    X(authorized, Authorized)        \
    X(joined, Joined)                \
    X(kicked, Kicked)                \
    X(left, Left)

struct Notification {
    const char* name;
    const char* function;  // of its handler, as the log has it
    Delegate::Call Delegate::*call;
};

#define HALVANE_XPC_NOTIFICATION(event, Event)                     \
    constexpr Notification k##Event = {                            \
        HALVANE_DAEMON_SERVICE_NAME ".status.client." #event,      \
        "-[HalvaneXPCClient handleNotificationClient" #Event ":]", \
        &Delegate::client##Event##_forInterface,                   \
    };
HALVANE_XPC_NOTIFICATIONS(HALVANE_XPC_NOTIFICATION)
#undef HALVANE_XPC_NOTIFICATION

template <typename... Value>
void log(const Notification& notification, const char* format, Value... value) {
    HALVANE_LOG_AS(&gLogCategory_WiFiXPC, notification.function, kLogLevelError, format, value...);
}

void logAddress(const Notification& notification, const ByteBuffer& mac) {
    if (!LogIsEnabled(&gLogCategory_WiFiXPC, kLogLevelError)) return;
    const PropertyListValue text = FancyFormatting::formattedMAC(mac);
    log(notification, "Client MAC     : %@\n", &text);
}

// Whoever is given a line, or the call, may end the client: from there on it is not used.
void handle(const Notification& notification, const IPCMessage& message,
            const std::shared_ptr<const Delegate>& delegate,
            const std::shared_ptr<const XPCLink>& link) {
    log(notification, "Command        : %s\n", notification.name);
    const auto* interfaceName = xpcValue<std::string>(message, "BSDName");
    if (interfaceName == nullptr) return;
    log(notification, "Interface      : %s\n", interfaceName->c_str());
    const auto* mac = xpcValue<ByteBuffer>(message, "MAC");
    if (mac == nullptr) return;
    logAddress(notification, *mac);
    if (delegate && (*delegate).*notification.call && !link->hasEnded()) {
        ((*delegate).*notification.call)(*mac, *interfaceName);
    }
}

}  // namespace

#define HALVANE_XPC_HANDLER(event, Event)                                               \
    void HalvaneXPCClient::handleNotificationClient##Event(const IPCMessage& message) { \
        handle(k##Event, message, delegate(), std::shared_ptr<const XPCLink>(link_));   \
    }
HALVANE_XPC_NOTIFICATIONS(HALVANE_XPC_HANDLER)
#undef HALVANE_XPC_HANDLER

void HalvaneXPCClient::handleNewXPCDictionary(const IPCMessage& message) {
    const auto* command = xpcValue<std::string>(message, "command");
    if (command == nullptr) return;
#define HALVANE_XPC_DISPATCH(event, Event) \
    if (*command == k##Event.name) return handleNotificationClient##Event(message);
    HALVANE_XPC_NOTIFICATIONS(HALVANE_XPC_DISPATCH)
#undef HALVANE_XPC_DISPATCH
}

void HalvaneXPCClient::registerNotifications() {
    xpcAct(*link_, xpcRequest("subscribe", {{"notifyAP", subscribeAP()}}),
           registerNotificationsResponse);
}

}  // namespace halvane
