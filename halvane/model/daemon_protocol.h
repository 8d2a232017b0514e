// The names of the daemon's protocol, for clients and daemons alike: commands, keys and
// notifications. docs/protocol.md defines what they mean; daemon_service.h has the names on the
// bus, and daemon_status.h the values of "status".
#ifndef HALVANE_MODEL_DAEMON_PROTOCOL_H
#define HALVANE_MODEL_DAEMON_PROTOCOL_H

#include <array>
#include <string_view>

#include "halvane/model/daemon_service.h"
#include "halvane/model/daemon_status.h"

namespace halvane::protocol {

// The values of key::kCommand in a request.
namespace command {

// Lists.
inline constexpr const char kDevices[] = "queryDeviceList";
inline constexpr const char kInterfaces[] = "queryInterfaceList";
inline constexpr const char kChannels[] = "queryChannelList";  // of an interface
// The configurations of an interface, or of all interfaces.
inline constexpr const char kConfigurations[] = "queryBSSConfigList";
inline constexpr const char kStations[] = "clientList";  // of all interfaces

// Actions on an interface.
inline constexpr const char kAdd[] = "configAdd";        // a configuration
inline constexpr const char kRemove[] = "configRemove";  // a configuration
inline constexpr const char kEnable[] = "enable";
inline constexpr const char kDisable[] = "disable";
inline constexpr const char kRole[] = "role";  // changes the role
inline constexpr const char kStart[] = "bssStart";
inline constexpr const char kStop[] = "bssStop";
// Sends a station away. An addition of this library, which other daemons may not know.
inline constexpr const char kKick[] = "kick";

// The daemon itself.
inline constexpr const char kSetLogging[] = "logging";
inline constexpr const char kLogging[] = "queryLogging";
inline constexpr const char kSubscribe[] = "subscribe";  // to notifications, or no longer

}  // namespace command

// The keys of messages.
namespace key {

inline constexpr const char kCommand[] = "command";  // string: of a request or a notification

// Requests. A request that sets the logging has the names of log categories as further keys.
inline constexpr const char kInterface[] = "interface";          // string
inline constexpr const char kRole[] = "role";                    // string
inline constexpr const char kConfiguration[] = "bssconfig";      // data: a property list
inline constexpr const char kWantsNotifications[] = "notifyAP";  // boolean

// Replies. Each list is data, which is a property list.
inline constexpr const char kStatus[] = "status";  // integer: a DaemonStatus, or a daemon's own
inline constexpr const char kDevices[] = "devices";
inline constexpr const char kInterfaces[] = "interfaces";
inline constexpr const char kChannels[] = "channels";
inline constexpr const char kConfigurations[] = "configs";
inline constexpr const char kStations[] = "clients";
inline constexpr const char kLogging[] = "params";  // string: the logging settings

// Notifications, and the latter also the request that sends a station away.
inline constexpr const char kStationInterface[] = "BSDName";  // string: hosts the network
inline constexpr const char kStationAddress[] = "MAC";        // data: 6 bytes

}  // namespace key

// The values of key::kCommand in a notification.
namespace notification {

// What happened to a station:
inline constexpr const char kAuthorized[] = HALVANE_DAEMON_SERVICE_NAME ".status.client.authorized";
inline constexpr const char kJoined[] = HALVANE_DAEMON_SERVICE_NAME ".status.client.joined";
inline constexpr const char kKicked[] = HALVANE_DAEMON_SERVICE_NAME ".status.client.kicked";
inline constexpr const char kLeft[] = HALVANE_DAEMON_SERVICE_NAME ".status.client.left";

}  // namespace notification

// The names of the daemon's log categories, which are keys of the request that sets the logging.
inline constexpr std::array<std::string_view, 9> kLogCategories = {
    "WiFi",     "WiFiBPF",  "WiFiEAPOL", "WiFiIE", "WiFiIO80211",
    "WiFiJoin", "WiFiScan", "WiFiWPS",   "WiFiXPC"};

}  // namespace halvane::protocol

#endif
