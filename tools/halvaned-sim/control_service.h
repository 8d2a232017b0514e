// The way to the simulation that a daemon does not have: control lines that come over the bus.
//
// It has a connection of its own, which stays where the daemon's is lost on purpose. A line is
// answered once what it makes happen has been told to subscribers.
#ifndef TOOLS_HALVANED_SIM_CONTROL_SERVICE_H
#define TOOLS_HALVANED_SIM_CONTROL_SERVICE_H

#include <functional>
#include <string>
#include <string_view>
#include <systemd/sd-bus.h>
#include <systemd/sd-event.h>

#include "halvane/platform/bus/pointers_internal.h"

#include "tools/halvaned-sim/control.h"
#include "tools/halvaned-sim/service.h"

namespace halvane::sim {

class ControlService {
  public:
    using QuitHandler = std::function<void()>;

    // Joins the bus, and offers itself there. Throws BusError where that fails.
    ControlService(sd_event* event, Simulation& simulation, Service& service, QuitHandler onQuit);
    ControlService(const ControlService&) = delete;
    ControlService& operator=(const ControlService&) = delete;

    // Leaves the bus, with everything sent.
    ~ControlService();

    // Whether lines can come over the bus: its policy may not let the name be owned.
    bool isReachable() const { return isReachable_; }

    // Does what a line says; the result has no action left.
    ControlResult follow(std::string_view line);

  private:
    std::string perform(const BusAction& action);
    void spoof(const Notification& forged);

    static int lineArrived(sd_bus_message*, void* control, sd_bus_error*);

    Simulation& simulation_;
    Service& service_;
    const QuitHandler onQuit_;
    const BusPointer bus_;
    bool isReachable_ = false;
};

}  // namespace halvane::sim

#endif
