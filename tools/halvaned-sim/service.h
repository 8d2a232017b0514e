// The daemon's connection to the bus: receives requests, and sends notifications.
//
// The service replies to a request first, and notifies of its effects afterwards.
#ifndef TOOLS_HALVANED_SIM_SERVICE_H
#define TOOLS_HALVANED_SIM_SERVICE_H

#include <functional>
#include <string>
#include <systemd/sd-bus.h>
#include <systemd/sd-event.h>
#include <vector>

#include "halvane/base/result.h"
#include "halvane/platform/bus/pointers_internal.h"

#include "tools/halvaned-sim/event_loop.h"
#include "tools/halvaned-sim/simulation.h"

namespace halvane::sim {

// Connects to the system bus, which DBUS_SYSTEM_BUS_ADDRESS may name, or returns why that fails.
Result<BusPointer, std::string> openSystemBus();

// Sends a notification, real or forged, to one subscriber.
void sendEvent(sd_bus* bus, const IPCMessage& event, const std::string& subscriber);

class Service {
  public:
    // Events of the service in the loop that have no caller to return to.
    struct Handlers {
        // The bus is gone, or cannot be joined again.
        std::function<void()> onLoss;
        // A fault made the service leave the bus, and it came back without the daemon's name.
        // takeName() returns why.
        std::function<void(const std::string& reason)> onNameless;
    };

    Service(sd_event* event, Simulation& simulation, Handlers handlers);
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;

    // Leaves the bus after sending everything.
    ~Service();

    // Joins the bus, and owns the daemon's name there, or returns why that fails. The other
    // functions require that it has succeeded.
    Result<void, std::string> start();

    // Notifies the subscribers of what has happened. When it returns, the bus has all
    // notifications.
    void deliver();

    // Gives up the daemon's name, or owns it again, or returns why that fails.
    Result<void, std::string> dropName();
    Result<void, std::string> takeName();

    // Leaves the bus, and comes back as another connection, without subscribers. Returns the same
    // as takeName(). If the bus is gone, handles the loss.
    Result<void, std::string> restart();

  private:
    Result<void, std::string> join();
    void leave();
    Result<void, std::string> publish();
    Result<void, std::string> watch();
    void restartSoon();
    void restartUnasked();
    void send(const std::vector<Notification>& notifications);
    int reply(sd_bus_message* request, const Answer& answer);

    static int requestArrived(sd_bus_message*, void* service, sd_bus_error*);
    static int nameLeft(sd_bus_message*, void* service, sd_bus_error*);
    static int disconnected(sd_bus_message*, void* service, sd_bus_error*);

    sd_event* const event_;
    Simulation& simulation_;
    const Handlers handlers_;
    BusPointer bus_;
    EventSourcePointer restart_;
};

}  // namespace halvane::sim

#endif
