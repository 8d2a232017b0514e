// Accepts control lines over the bus. A real daemon has no such service.
//
// The service has its own connection, which stays when the daemon's is lost on purpose. It replies
// to a line after subscribers have been notified of the line's effects.
#ifndef TOOLS_HALVANED_SIM_CONTROL_SERVICE_H
#define TOOLS_HALVANED_SIM_CONTROL_SERVICE_H

#include <functional>
#include <string>
#include <string_view>
#include <systemd/sd-bus.h>
#include <systemd/sd-event.h>

#include "halvane/base/result.h"
#include "halvane/platform/bus/pointers_internal.h"
#include "halvane/service/daemon_server.h"

#include "tools/halvaned-sim/control.h"
#include "tools/halvaned-sim/simulated_backend.h"
#include "tools/halvaned-sim/simulation.h"

namespace halvane::sim {

class ControlService {
  public:
    using QuitHandler = std::function<void()>;

    // The parts of the running simulation.
    struct Parts {
        Simulation& simulation;
        SimulatedBackend& backend;
        DaemonServer& server;
    };

    ControlService(sd_event* event, const Parts& parts, QuitHandler onQuit);
    ControlService(const ControlService&) = delete;
    ControlService& operator=(const ControlService&) = delete;

    // Leaves the bus after sending everything.
    ~ControlService();

    // Joins the bus and publishes the service there, or returns why that fails. The other functions
    // require that it has succeeded.
    Result<void, std::string> start();

    // Whether lines can arrive over the bus. The policy of the bus may not allow owning the name.
    bool isReachable() const { return isReachable_; }

    // Carries out a line. The result has no action left.
    ControlResult follow(std::string_view line);

  private:
    Result<void, std::string> perform(const BusAction& action);
    void spoof(const Notification& forged);

    static int lineArrived(sd_bus_message*, void* control, sd_bus_error*);

    sd_event* const event_;
    const Parts parts_;
    const QuitHandler onQuit_;
    BusPointer bus_;
    bool isReachable_ = false;
};

}  // namespace halvane::sim

#endif
