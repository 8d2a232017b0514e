// A Wi-Fi daemon on the system bus: everything but the radios, which a Backend knows.
//
// The server owns the daemon's name, reads requests, passes them to the backend, replies, and
// notifies subscribers of what happens to stations. docs/protocol.md defines all of this, and
// docs/daemon.md shows how to write a daemon with it.
//
//     MyBackend backend;
//     MyLogSettings logging;
//     DaemonServer server(loop, {backend, logging});
//     if (const auto started = server.start(); !started) ...
//     sd_event_loop(loop);
//
// The system bus is the one that DBUS_SYSTEM_BUS_ADDRESS names, if it names one.
//
// Threads: only the thread that runs the loop may use a server.
#ifndef HALVANE_SERVICE_DAEMON_SERVER_H
#define HALVANE_SERVICE_DAEMON_SERVER_H

#include <functional>
#include <memory>
#include <string>

#include "halvane/base/export.h"
#include "halvane/base/result.h"
#include "halvane/service/backend.h"
#include "halvane/service/daemon_faults.h"
#include "halvane/service/daemon_limits.h"
#include "halvane/service/log_settings.h"
#include "halvane/service/subscribers.h"

// IWYU pragma: no_include <systemd/sd-event.h>
struct sd_event;  // a loop, of that header

namespace halvane {

// The parts of a daemon. All of them outlive the server.
struct DaemonParts {
    Backend& backend;          // knows the radios; outlives the server
    LogSettings& logging;      // knows the daemon's log; outlives the server
    DaemonLimits limits = {};  // of what clients may demand

    // Keeps the subscribers, if the program wants to look at them.
    Subscribers* subscribers = nullptr;

    // For tests of clients.
    DaemonFaults* faults = nullptr;
};

// Events that have no caller to return to. Each function may be empty. They must not destroy the
// server.
// REQUIRES of each: throws nothing but std::bad_alloc.
struct DaemonServerHandlers {
    // The bus is gone, or cannot be joined again. A daemon should end then.
    std::function<void()> onLoss = nullptr;

    // A fault made the server leave the bus, and it came back without the daemon's name. takeName()
    // returns why.
    std::function<void(const std::string& reason)> onNameless = nullptr;
};

class HALVANE_EXPORT DaemonServer {
  public:
    // `loop` outlives the server. Joins no bus yet.
    DaemonServer(sd_event* loop, const DaemonParts& parts, DaemonServerHandlers handlers = {});
    DaemonServer(const DaemonServer&) = delete;
    DaemonServer& operator=(const DaemonServer&) = delete;

    // Leaves the bus after sending everything. Replies that the backend still holds do nothing
    // when they are called.
    ~DaemonServer();

    // Joins the bus, and owns the daemon's name there, or returns why that fails, for people. The
    // other functions require that it has succeeded.
    Result<void, std::string> start();

    // Waits until the bus has every reply and notification.
    void flush();

    // Gives up the daemon's name, or owns it again, or returns why that fails. Without its name the
    // server still replies to requests that it has got.
    Result<void, std::string> dropName();
    Result<void, std::string> takeName();

    // Leaves the bus, and comes back as another connection, without subscribers. Returns the same
    // as takeName(). If the bus is gone, calls onLoss.
    Result<void, std::string> restart();

  private:
    struct HALVANE_HIDDEN Core;
    std::unique_ptr<Core> core_;
};

}  // namespace halvane

#endif
