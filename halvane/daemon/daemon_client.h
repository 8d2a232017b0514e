// A client of the Wi-Fi daemon that tells what happened: every request has a result, the daemon may
// be restarted, and several threads may ask at once.
//
//     DaemonClient daemon({.station = [](const StationChange& change) { ... }});
//     if (const auto done = daemon.subscribe(true, 5s); !done) return
//     complain(done.error().text()); daemon.start("wlan0", [](DaemonResult<void> done) { ... });
//
// It makes one connection to the service kDaemonServiceName on the system bus, the one that
// DBUS_SYSTEM_BUS_ADDRESS names when the client is made, and keeps it up:
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
// (2) If notifications were asked for, the client asks for them anew, and tells what came of it.
//
// A request is sent in every state but BusGone and Ending, where it fails at once; one that waits
// when the daemon or the bus goes fails then. None is sent twice. docs/protocol.md tells what goes
// over the bus. The client logs nothing.
//
// Requests. Each has two forms:
// - with a deadline, which blocks until there is a result or the deadline has passed; without one
//   it waits as long as the daemon takes. An answer that comes too late is dropped, but up to then
//   the request counts to the 128 that a bus lets a client have under way. It throws nothing, and
//   sends nothing where the deadline has passed already.
// - with a completion, which is called exactly once. That is on the client's queue; where memory is
//   short on whatever thread finds so; and by the destructor, on its thread, for what still waits.
// Names and roles are text in UTF-8 without U+0000; others are Unsendable.
//
// Order. Requests of one thread reach the daemon in their order. Events and completions are called
// one at a time, in the order in which their messages came from the bus; the results of blocking
// requests come beside that order. They hold up only each other, and may make requests of either
// form.
//
// Threads: any call from any thread, events and completions included, also at once. Where memory is
// short events are dropped. In a child that fork() makes of the process requests fail with Ending,
// and destroying the client waits for nothing and leaves its memory behind; the child may make a
// client of its own.
#ifndef HALVANE_DAEMON_DAEMON_CLIENT_H
#define HALVANE_DAEMON_DAEMON_CLIENT_H

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/export.h"
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
    using Deadline = DaemonDeadline;
    template <typename T>
    using Done = DaemonCompletion<T>;
    using Devices = std::vector<HalvaneDevice>;
    using Interfaces = std::vector<HalvaneInterface>;
    using Channels = std::vector<HalvaneChannel>;
    using Configurations = std::vector<HalvaneBSSConfig>;
    using Stations = std::vector<HalvaneClient>;

    // Begins to connect, and waits for nothing but the look-up of a host's name where the bus's
    // address holds one. Events may be told before it has returned. Throws std::bad_alloc where
    // there is no room for the client or one of its three threads.
    // REQUIRES: nobody changes the environment during the call.
    explicit DaemonClient(DaemonEvents events = {});

    DaemonClient(const DaemonClient&) = delete;
    DaemonClient& operator=(const DaemonClient&) = delete;

    // Ends the connection. Blocked requests, on whatever thread, return with Ending; so do the
    // completions that wait, which are called from here. Waits for an event or completion that is
    // running, unless called from that one. Afterwards none is called.
    // REQUIRES: no other thread begins a call, and what is running does not wait for the destroying
    // thread.
    ~DaemonClient();

    // May be out of date when it is read.
    DaemonState state() const;

    // --- Lists: without what makes no record ---

    DaemonResult<Devices> devices(Deadline deadline = {});
    void devices(const Done<Devices>& done);
    DaemonResult<Interfaces> interfaces(Deadline deadline = {});
    void interfaces(const Done<Interfaces>& done);
    DaemonResult<Channels> channels(std::string_view interface, Deadline deadline = {});
    void channels(std::string_view interface, const Done<Channels>& done);

    // Of one interface, or of all.
    DaemonResult<Configurations> configurations(std::optional<std::string_view> interface,
                                                Deadline deadline = {});
    void configurations(std::optional<std::string_view> interface,
                        const Done<Configurations>& done);

    // Of all interfaces.
    DaemonResult<Stations> stations(Deadline deadline = {});
    void stations(const Done<Stations>& done);

    // --- Actions ---

    // A configuration with a text that has no XML form is Unsendable.
    DaemonResult<void> add(std::string_view interface, const HalvaneBSSConfig& configuration,
                           Deadline deadline = {});
    void add(std::string_view interface, const HalvaneBSSConfig& configuration,
             const Done<void>& done);

    // The daemon decides which of its configurations is meant.
    DaemonResult<void> remove(std::string_view interface, const HalvaneBSSConfig& configuration,
                              Deadline deadline = {});
    void remove(std::string_view interface, const HalvaneBSSConfig& configuration,
                const Done<void>& done);

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

    // --- Notifications and logging ---

    // Whether the daemon is to tell of stations from now on. The client keeps the wish, whatever
    // comes of the request, and renews it when the daemon comes back.
    DaemonResult<void> subscribe(bool isWanted, Deadline deadline = {});
    void subscribe(bool isWanted, const Done<void>& done);

    // Changes the daemon's log categories of the same names.
    DaemonResult<void> setLogging(const DaemonLogControls& controls, Deadline deadline = {});
    void setLogging(const DaemonLogControls& controls, const Done<void>& done);

    // The daemon's logging settings in its own words.
    DaemonResult<std::string> logging(Deadline deadline = {});
    void logging(const Done<std::string>& done);

  private:
    const std::shared_ptr<DaemonLink> link_;
};

}  // namespace halvane

#endif
