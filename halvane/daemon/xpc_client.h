// The client of the Wi-Fi daemon: requests, notifications, and the daemon's logging.
//
//     auto client = HalvaneXPCClient::init();
//     std::optional<Error> error;
//     for (const HalvaneInterface& interface : client->queryInterfaceList(&error)) ...
//
// One client is one connection to the service kDaemonServiceName on the system bus, and two serial
// queues. Events are handled on the connection queue, "<service>.connection.queue", replies on the
// reply queue, "<service>.reply.queue". A waiting caller takes that queue's place for its own
// reply. If there is no bus, or the bus goes away, the connection becomes invalid for good: every
// later request fails at once, and the program needs a new client. If the daemon goes away and
// comes back, later requests find it again, but notifications must be registered again.
// docs/protocol.md describes the messages on the bus.
//
// A request blocks until the daemon's reply was handled, without a time limit: a daemon that never
// replies blocks its caller forever. A request fails with code -6700 if the daemon or the bus goes
// away, if a text cannot be sent (it is not UTF-8, or holds U+0000), or if memory cannot hold the
// reply. A request that does not fit into memory itself throws std::bad_alloc. If memory is short,
// notifications are dropped.
//
// A child process made by fork() must not use the client: it has none of the client's threads.
// There requests fail at once with -6700, delegate() returns null, and destroying the client waits
// for nothing and leaves its memory allocated. The child may create a client of its own.
//
// Threads: any thread but the reply queue's may make requests, delegate calls included. Callers
// must take turns: of two concurrent requests, each may be released by the other's reply, and one
// released before its own reply was handled fails with -6700 (an action still returns true). Any
// thread may call delegate(), setDelegate(), subscribeAP() and the parsers of replies at any time.
#ifndef HALVANE_DAEMON_XPC_CLIENT_H
#define HALVANE_DAEMON_XPC_CLIENT_H

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "halvane/base/error.h"
#include "halvane/base/export.h"
#include "halvane/daemon/xpc_client_delegate.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/client.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/bus/service_event.h"
#include "halvane/regulatory/channel.h"

namespace halvane {

class XPCLink;
class HALVANE_EXPORT HalvaneXPCClient final {
  public:
    // Returns a client that is connecting, never null. It sends nothing yet and waits for nothing.
    // REQUIRES: nobody changes the environment during the call.
    static std::unique_ptr<HalvaneXPCClient> init();

    HalvaneXPCClient(const HalvaneXPCClient&) = delete;
    HalvaneXPCClient& operator=(const HalvaneXPCClient&) = delete;

    // Ends the connection and waits for a running delegate call; none follows. A request that this
    // call waits for is released as failed. This call may destroy the client. So may a log output's
    // callback that receives one of its lines; it still receives a notification's other lines.
    // REQUIRES: other threads' requests have returned, and a running delegate call does not wait
    // for the destroying thread.
    ~HalvaneXPCClient();

    // --- Notifications ---
    // The delegate receives the notifications; null, as at the start, for none. The client holds it
    // until it is replaced. A call to the former delegate may still run when setDelegate() returns.
    std::shared_ptr<const HalvaneXPCClientDelegate> delegate() const;
    void setDelegate(std::shared_ptr<const HalvaneXPCClientDelegate> delegate);

    // Whether the program wants notifications of hosted networks; false at the start. Setting it,
    // even to the same value, stores the flag and makes the request registerNotifications().
    bool subscribeAP() const { return subscribeAP_; }
    void setSubscribeAP(bool value);

    // Sends the flag to the daemon and ignores the daemon's status.
    void registerNotifications();

    // --- Lists ---
    // An empty list may mean a failure. `error`, if given, is set on failure (kDaemonErrorDomain,
    // with the daemon's status, or -6700 if there was no reply) and cleared on success.
    std::vector<HalvaneDevice> queryDeviceList(std::optional<Error>* error = nullptr);
    std::vector<HalvaneInterface> queryInterfaceList(std::optional<Error>* error = nullptr);
    std::vector<HalvaneChannel> queryChannelList_error(const std::string& interfaceName,
                                                       std::optional<Error>* error = nullptr);

    // Of all interfaces if no name is given.
    std::vector<HalvaneBSSConfig> queryBSSConfigList_error(
        const std::optional<std::string>& interfaceName, std::optional<Error>* error = nullptr);

    // Always of all interfaces: the name is not sent.
    std::vector<HalvaneClient> queryClientList_error(
        const std::optional<std::string>& interfaceName, std::optional<Error>* error = nullptr);

    // --- Actions ---
    // An action returns true whatever the daemon replied, even if it did not reply. The lists show
    // its effect afterwards. `error` is never changed.

    // A configuration that holds text without an XML form is not sent.
    bool bssConfigAdd_forInterface_error(const HalvaneBSSConfig& config,
                                         const std::string& interfaceName,
                                         std::optional<Error>* error = nullptr);
    bool bssConfigRemove_forInterface_error(const HalvaneBSSConfig& config,
                                            const std::string& interfaceName,
                                            std::optional<Error>* error = nullptr);
    bool enableInterface_error(const std::string& interfaceName,
                               std::optional<Error>* error = nullptr);
    bool disableInterface_error(const std::string& interfaceName,
                                std::optional<Error>* error = nullptr);
    bool changeInterfaceRole_role_error(const std::string& interfaceName, const std::string& role,
                                        std::optional<Error>* error = nullptr);
    bool bssStart_error(const std::string& interfaceName, std::optional<Error>* error = nullptr);
    bool bssStop_error(const std::string& interfaceName, std::optional<Error>* error = nullptr);

    // --- The daemon's logging ---
    // Changes the daemon's log categories of the same names by control strings (docs/logging.md);
    // an absent string changes nothing. Returns whether the daemon replied with status 0. `error`,
    // if given, is set for another status, and unchanged otherwise, even without a reply.
    bool setLogging_inBPF_inEAPOL_inIE_inIO80211_inJoin_inScan_inWPS_inXPC_error(
        const std::optional<std::string>& inWiFi, const std::optional<std::string>& inBPF,
        const std::optional<std::string>& inEAPOL, const std::optional<std::string>& inIE,
        const std::optional<std::string>& inIO80211, const std::optional<std::string>& inJoin,
        const std::optional<std::string>& inScan, const std::optional<std::string>& inWPS,
        const std::optional<std::string>& inXPC, std::optional<Error>* error = nullptr);

    // Returns the daemon's logging settings in its own words, if any. `error` is never changed.
    std::optional<std::string> queryLogging(std::optional<Error>* error = nullptr);

    // --- Parsers of replies ---
    // A value of the wrong type, or a "status" that is not a signed 64-bit number, reads as
    // missing. A missing "status" is 0, success. A status is the number's lowest 32 bits, with
    // their sign.

    // Return the list under "devices", "interfaces", "channels", "configs" or "clients" in order,
    // without items that make no record. A success without such a list gives an empty list and no
    // error. `error`, if given, is set on failure and otherwise unchanged.
    static std::vector<HalvaneDevice> queryDeviceListResponse_error(
        const ServiceReply& reply, std::optional<Error>* error = nullptr);
    static std::vector<HalvaneInterface> queryInterfaceListResponse_error(
        const ServiceReply& reply, std::optional<Error>* error = nullptr);
    static std::vector<HalvaneChannel> queryChannelListResponse_error(
        const ServiceReply& reply, std::optional<Error>* error = nullptr);
    static std::vector<HalvaneBSSConfig> queryBSSConfigListResponse_error(
        const ServiceReply& reply, std::optional<Error>* error = nullptr);
    static std::vector<HalvaneClient> queryClientListResponse_error(
        const ServiceReply& reply, std::optional<Error>* error = nullptr);

    // Return whether the daemon replied with success.
    static bool bssConfigAddResponse(const ServiceReply& reply);
    static bool bssConfigRemoveResponse(const ServiceReply& reply);
    static bool enableInterfaceResponse(const ServiceReply& reply);
    static bool disableInterfaceResponse(const ServiceReply& reply);
    static bool changeInterfaceRoleResponse(const ServiceReply& reply);
    static bool bssStartResponse(const ServiceReply& reply);
    static bool bssStopResponse(const ServiceReply& reply);
    static bool registerNotificationsResponse(const ServiceReply& reply);

    // The same. `error`, if given, is set for a status other than 0, and otherwise unchanged.
    static bool setLoggingResponse_error(const ServiceReply& reply,
                                         std::optional<Error>* error = nullptr);

    // Returns the text under "params", whatever the status is.
    static std::optional<std::string> queryLoggingResponse(const ServiceReply& reply);

    // --- Handlers of events ---
    // The connection calls handleXPCEvent() on the connection queue. The handlers log to WiFiXPC:
    // errors and notifications at level "error", other events at "verbose".

    // Passes a dictionary on. After earlier replies an Invalid error releases the connection.
    void handleXPCEvent(const ServiceEvent& event);

    // Calls the handler of the notification that "command" names; ignores any other message.
    void handleNewXPCDictionary(const IPCMessage& message);

    // Log the notification, its "BSDName" and its "MAC", up to the first missing one, and call the
    // delegate if both are present.
    void handleNotificationClientAuthorized(const IPCMessage& message);
    void handleNotificationClientJoined(const IPCMessage& message);
    void handleNotificationClientKicked(const IPCMessage& message);
    void handleNotificationClientLeft(const IPCMessage& message);

  private:
    HalvaneXPCClient();

    mutable std::mutex delegateMutex_;  // a forked child may inherit it locked
    std::shared_ptr<const HalvaneXPCClientDelegate> delegate_;
    std::atomic<bool> subscribeAP_ = false;
    std::shared_ptr<XPCLink> link_;  // an event that destroys the client keeps it alive
};

// A client that the parts of an application may share. It is empty until the application sets it;
// the library never does. It is destroyed with the static objects of the process.
extern HALVANE_EXPORT std::shared_ptr<HalvaneXPCClient> gHalvaneXPCClient;

}  // namespace halvane

#endif
