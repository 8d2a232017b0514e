// The client of the Wi-Fi daemon: requests, notifications, and the daemon's logging.
//
//     auto client = HalvaneXPCClient::init();
//     std::optional<Error> error;
//     for (const HalvaneInterface& interface : client->queryInterfaceList(&error)) ...
//
// One client is one connection to the service kDaemonServiceName on the system bus, and two serial
// queues: events are handled on the connection queue, "<service>.connection.queue", replies on the
// reply queue, "<service>.reply.queue". When the connection has become invalid, since there is no
// bus or it went away, it stays so: every later request fails at once, and a new connection needs a
// new client. When the daemon goes away and comes back, later requests find it again;
// notifications have to be registered for anew. docs/protocol.md tells what goes over the bus.
//
// Requests block until the daemon's reply was handled, without a time limit: a daemon that never
// answers blocks its caller for good. A request that cannot be answered any more, since the daemon
// or the bus went away or a text cannot be sent (it is not UTF-8, or holds U+0000), is answered
// with an error. That error, and a reply that does not fit into memory, read as code -6700.
//
// A child that fork() makes of the process may not use the client, for it has none of the threads:
// there requests fail at once, with -6700, it has no delegate, and ending it waits for nothing and
// leaves its memory behind. The child may make a client of its own.
//
// Where memory is short notifications are dropped, and a request whose reply does not fit fails
// with -6700; one that cannot even be made throws std::bad_alloc.
//
// Threads: requests may come from any thread but the reply queue's, delegate calls included, one
// after the other: callers take turns. Of two requests at once either may be released by the
// other's reply; one that is released before its own reply was handled fails with -6700 (an action
// answers true all the same). delegate(), setDelegate() and subscribeAP() may be called at any
// time. The parsers of replies are pure and may be called from any thread.
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
    // A client whose connection is being made; nothing is sent yet, and nothing waited for. Never
    // null.
    // REQUIRES: nobody changes the environment during the call.
    static std::unique_ptr<HalvaneXPCClient> init();

    HalvaneXPCClient(const HalvaneXPCClient&) = delete;
    HalvaneXPCClient& operator=(const HalvaneXPCClient&) = delete;

    // Ends the connection; waits for a delegate call that is running. No delegate call is made
    // afterwards. A request that such a call waits for is released as failed.
    // REQUIRES: other threads are done with their requests, and the delegate call that is running
    // does not wait for the destroying thread. It may itself be the one that destroys, and so may
    // the callback of a log output that is given one of the client's lines; of a notification it is
    // given the further lines all the same.
    ~HalvaneXPCClient();

    // --- Notifications ---

    // Who is called for notifications; held until it is replaced. Null, as at the start, for
    // nobody. A call to the one that is replaced may still be running when setDelegate() returns.
    std::shared_ptr<const HalvaneXPCClientDelegate> delegate() const;
    void setDelegate(std::shared_ptr<const HalvaneXPCClientDelegate> delegate);

    // Whether the daemon is asked for notifications of hosted networks; false at the start. Setting
    // it, to whatever value, is a request: it stores the flag and calls registerNotifications().
    bool subscribeAP() const { return subscribeAP_; }
    void setSubscribeAP(bool value);

    // Tells the daemon the flag. The daemon's verdict is dropped.
    void registerNotifications();

    // --- Lists ---
    //
    // An empty list may be a failure. `error`, where it is given, is set then, and cleared where
    // the request succeeded: its domain is kDaemonErrorDomain, its code the daemon's status, or
    // -6700 where there was no reply.

    std::vector<HalvaneDevice> queryDeviceList(std::optional<Error>* error = nullptr);
    std::vector<HalvaneInterface> queryInterfaceList(std::optional<Error>* error = nullptr);
    std::vector<HalvaneChannel> queryChannelList_error(const std::string& interfaceName,
                                                       std::optional<Error>* error = nullptr);

    // Of all interfaces where no name is given.
    std::vector<HalvaneBSSConfig> queryBSSConfigList_error(
        const std::optional<std::string>& interfaceName, std::optional<Error>* error = nullptr);

    // Of all interfaces, always: the name is not sent.
    std::vector<HalvaneClient> queryClientList_error(
        const std::optional<std::string>& interfaceName, std::optional<Error>* error = nullptr);

    // --- Actions ---
    //
    // True whatever the daemon answered, and also where it did not: who wants to know asks for the
    // lists afterwards. `error` is never touched.

    // A configuration that has no XML form, for a text in it, is not sent.
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

    // Changes the daemon's log categories of the same names: one control string each
    // (docs/logging.md), WiFi's first; a category whose string is absent stays as it is. Answers
    // whether the daemon took them. `error`, where it is given, is set to what it answered instead,
    // and else untouched: also where there was no reply, which is just false.
    bool setLogging_inBPF_inEAPOL_inIE_inIO80211_inJoin_inScan_inWPS_inXPC_error(
        const std::optional<std::string>& inWiFi, const std::optional<std::string>& inBPF,
        const std::optional<std::string>& inEAPOL, const std::optional<std::string>& inIE,
        const std::optional<std::string>& inIO80211, const std::optional<std::string>& inJoin,
        const std::optional<std::string>& inScan, const std::optional<std::string>& inWPS,
        const std::optional<std::string>& inXPC, std::optional<Error>* error = nullptr);

    // The daemon's logging settings in its own words; absent where it did not tell. `error` is
    // never touched.
    std::optional<std::string> queryLogging(std::optional<Error>* error = nullptr);

    // --- Parsers of replies ---
    //
    // A key of the wrong type reads as a missing one, and so does a "status" that is no signed
    // 64-bit number; a missing "status" is 0, success. A status is the lowest 32 bits of the
    // number, with their sign.

    // The list under "devices", "interfaces", "channels", "configs" or "clients", in order, without
    // what makes no record. Empty, and without an error, for a success that holds no such list.
    // `error`, where it is given, is set for a failure, and else untouched.
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

    // Whether the daemon replied, and with success.
    static bool bssConfigAddResponse(const ServiceReply& reply);
    static bool bssConfigRemoveResponse(const ServiceReply& reply);
    static bool enableInterfaceResponse(const ServiceReply& reply);
    static bool disableInterfaceResponse(const ServiceReply& reply);
    static bool changeInterfaceRoleResponse(const ServiceReply& reply);
    static bool bssStartResponse(const ServiceReply& reply);
    static bool bssStopResponse(const ServiceReply& reply);
    static bool registerNotificationsResponse(const ServiceReply& reply);

    // The same, with `error`, where it is given, set for a status other than 0, and else untouched.
    static bool setLoggingResponse_error(const ServiceReply& reply,
                                         std::optional<Error>* error = nullptr);

    // The text under "params", whatever the status is.
    static std::optional<std::string> queryLoggingResponse(const ServiceReply& reply);

    // --- Handlers of events ---
    //
    // The connection calls handleXPCEvent() on the connection queue. They log to WiFiXPC, errors
    // and notifications at level "error", other events at "verbose".

    // Hands a dictionary on; an Invalid error releases the connection, but not before the replies
    // that came before it were handled.
    void handleXPCEvent(const ServiceEvent& event);

    // Calls the handler of the notification that "command" names; no other message does anything.
    void handleNewXPCDictionary(const IPCMessage& message);

    // Log the notification, its "BSDName" and its "MAC", up to the first that is missing, and make
    // the delegate's call where neither is.
    void handleNotificationClientAuthorized(const IPCMessage& message);
    void handleNotificationClientJoined(const IPCMessage& message);
    void handleNotificationClientKicked(const IPCMessage& message);
    void handleNotificationClientLeft(const IPCMessage& message);

  private:
    HalvaneXPCClient();

    mutable std::mutex delegateMutex_;  // in another process it may be taken for good
    std::shared_ptr<const HalvaneXPCClientDelegate> delegate_;
    std::atomic<bool> subscribeAP_ = false;
    std::shared_ptr<XPCLink> link_;  // outlives the client in an event that ends it
};

// The application's client, for its parts to share: empty until the application fills it; the
// library never does. What is left in it goes with the static objects of the process.
extern HALVANE_EXPORT std::shared_ptr<HalvaneXPCClient> gHalvaneXPCClient;

}  // namespace halvane

#endif
