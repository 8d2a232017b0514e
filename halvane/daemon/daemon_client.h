// A client of the Wi-Fi daemon that reports what happened: every request has a result, the client
// survives a restart of the daemon, and several threads may send requests at once.
//
//     DaemonClient daemon({.station = [](const StationChange& change) { ... }});
//     const auto asked = daemon.subscribe(true, 5s);
//     if (!asked) return complain(asked.error().text());
//     daemon.start("wlan0", [](DaemonResult<void> done) { ... });
//
// It makes one connection to the service kDaemonServiceName on the system bus, and keeps the
// connection up. DBUS_SYSTEM_BUS_ADDRESS may name another bus; the constructor reads it.
//
//   Connecting --- the daemon is there ----> Connected <---- the daemon is back (2) ----+
//    |      |                                 |     ^                                   |
//    |      |                                 |     +------- both are back (2) ----+    |
//    |      |                                 |                                    |    |
//    |      |                                 +-- the bus goes --> BusGone (1) ----+    |
//    |      |                                 |                     ^   ^  |            |
//    |      +--- there is no bus -------------|---------------------+   |  the bus      |
//    |                                        |              the bus goes  is back      |
//    |                                        |                         |  v            |
//    +--- the daemon is not there ------------+-- the daemon goes --> DaemonGone -------+
//
//   Any of them --- the client is destroyed ---> Ending
//
// (1) The client tries again after 0.1 s, then after twice as long each time, up to 10 s.
// (2) If notifications were asked for, the client asks for them again and reports the result.
//
// A request is sent in every state except BusGone and Ending. There it fails at once, even while
// the client tries to reach the bus. A pending request fails when the daemon or the bus goes away.
// No request is sent twice. docs/protocol.md describes the messages on the bus. The client logs
// nothing.
//
// Requests. Each has two forms:
// - With a deadline: it blocks until there is a result or the deadline has passed. Without a
//   deadline it waits as long as the daemon takes. A late reply is dropped; until it comes, the
//   request counts towards the 128 that a bus lets a client have pending. The call throws nothing.
//   If the deadline has already passed, it sends nothing. While it waits, the calling thread
//   receives for the whole client, so it should not be stopped from running.
// - With a completion, which is called exactly once. It is normally called on the client's queue.
//   If memory is short, the thread that finds so calls it. The destructor calls it on its own
//   thread for a request that is still pending.
// Names and roles are UTF-8 text without U+0000; any other text makes the request Unsendable.
//
// Order. The requests of one thread reach the daemon in their order. Events and completions are
// called one at a time, in the order in which their messages came from the bus. The results of
// blocking requests are not part of that order. An event or completion delays only the others, and
// may make requests of either form.
//
// Threads: any thread may call any function at any time, also from events and completions. If
// memory is short, events of stations are dropped, and the others come late. In a child process
// made by fork(), requests fail with Ending, and destroying the client waits for nothing and leaves
// its memory allocated; the child may create a client of its own.
#ifndef HALVANE_DAEMON_DAEMON_CLIENT_H
#define HALVANE_DAEMON_DAEMON_CLIENT_H

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/export.h"
#include "halvane/base/mac_address.h"
#include "halvane/daemon/daemon_events.h"
#include "halvane/daemon/daemon_log_controls.h"
#include "halvane/daemon/daemon_result.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/client.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"
#include "halvane/regulatory/channel.h"

namespace halvane {

class DaemonLink;

class HALVANE_EXPORT DaemonClient final {
  public:
    // Short names of what the functions take and return:
    using Deadline = DaemonDeadline;
    template <typename T>
    using Done = DaemonCompletion<T>;
    using Devices = std::vector<HalvaneDevice>;
    using Interfaces = std::vector<HalvaneInterface>;
    using Channels = std::vector<HalvaneChannel>;
    using Configurations = std::vector<HalvaneBSSConfig>;
    using Stations = std::vector<HalvaneClient>;

    // Begins to connect. It waits for nothing except the look-up of a host name, if the bus's
    // address holds one. Events may come before the constructor returns. Throws std::bad_alloc if
    // there is no room for the client or one of its three threads.
    // REQUIRES: nobody changes the environment during the call.
    explicit DaemonClient(DaemonEvents events = {});

    DaemonClient(const DaemonClient&) = delete;
    DaemonClient& operator=(const DaemonClient&) = delete;

    // Ends the connection. Blocked requests of any thread return with Ending. Pending completions
    // are called from here with Ending. The destructor waits for an event or completion that is
    // running, unless called from it. Nothing is called afterwards.
    // REQUIRES: no other thread begins a call, and no running event or completion waits for the
    // destroying thread.
    ~DaemonClient();

    // The state may have changed by the time that the caller reads it.
    DaemonState state() const;

    // --- Lists. Items that make no record are left out. ---

    // The devices of the daemon, its interfaces, and the channels that an interface can use:
    DaemonResult<Devices> devices(Deadline deadline = {});
    void devices(const Done<Devices>& done);
    DaemonResult<Interfaces> interfaces(Deadline deadline = {});
    void interfaces(const Done<Interfaces>& done);
    DaemonResult<Channels> channels(std::string_view interface, Deadline deadline = {});
    void channels(std::string_view interface, const Done<Channels>& done);

    // Of one interface, or of all if `interface` is absent.
    DaemonResult<Configurations> configurations(std::optional<std::string_view> interface,
                                                Deadline deadline = {});
    void configurations(std::optional<std::string_view> interface,
                        const Done<Configurations>& done);

    // Of all interfaces.
    DaemonResult<Stations> stations(Deadline deadline = {});
    void stations(const Done<Stations>& done);

    // --- Actions ---

    // A configuration that holds text without an XML form is Unsendable.
    DaemonResult<void> add(std::string_view interface, const HalvaneBSSConfig& configuration,
                           Deadline deadline = {});
    void add(std::string_view interface, const HalvaneBSSConfig& configuration,
             const Done<void>& done);

    // The daemon decides which of its configurations matches.
    DaemonResult<void> remove(std::string_view interface, const HalvaneBSSConfig& configuration,
                              Deadline deadline = {});
    void remove(std::string_view interface, const HalvaneBSSConfig& configuration,
                const Done<void>& done);

    // Enables or disables an interface, sets its role, and starts or stops its networks:
    DaemonResult<void> enable(std::string_view interface, Deadline deadline = {});
    void enable(std::string_view interface, const Done<void>& done);
    DaemonResult<void> disable(std::string_view interface, Deadline deadline = {});
    void disable(std::string_view interface, const Done<void>& done);
    DaemonResult<void> setRole(std::string_view interface, std::string_view role,
                               Deadline deadline = {});
    void setRole(std::string_view interface, std::string_view role, const Done<void>& done);
    DaemonResult<void> start(std::string_view interface, Deadline deadline = {});
    void start(std::string_view interface, const Done<void>& done);
    DaemonResult<void> stop(std::string_view interface, Deadline deadline = {});
    void stop(std::string_view interface, const Done<void>& done);

    // Sends an associated station away. A daemon that is not of this library may not know the
    // request, which is Refused then. A daemon of this library refuses it with
    // DaemonStatus::UnknownStation if no such station is associated, and with NoBSS if the
    // interface hosts no network.
    DaemonResult<void> kick(std::string_view interface, const MacAddress& station,
                            Deadline deadline = {});
    void kick(std::string_view interface, const MacAddress& station, const Done<void>& done);

    // --- Notifications and logging ---

    // Sets whether the daemon reports stations from now on. The client remembers the setting
    // whatever the result is, even if the deadline has already passed. If the setting is true, the
    // client sends it again when the daemon comes back.
    DaemonResult<void> subscribe(bool isWanted, Deadline deadline = {});
    void subscribe(bool isWanted, const Done<void>& done);

    // Changes the daemon's log categories, which have the same names as the library's.
    DaemonResult<void> setLogging(const DaemonLogControls& controls, Deadline deadline = {});
    void setLogging(const DaemonLogControls& controls, const Done<void>& done);

    // Returns the daemon's logging settings as the daemon words them.
    DaemonResult<std::string> logging(Deadline deadline = {});
    void logging(const Done<std::string>& done);

  private:
    const std::shared_ptr<DaemonLink> link_;
};

}  // namespace halvane

#endif
