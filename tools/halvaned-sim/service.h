// The daemon's connection to the bus: takes requests, and sends notifications.
//
// A request is answered first, what it makes happen is told afterwards.
#ifndef TOOLS_HALVANED_SIM_SERVICE_H
#define TOOLS_HALVANED_SIM_SERVICE_H

#include <functional>
#include <string>
#include <systemd/sd-bus.h>
#include <systemd/sd-event.h>
#include <vector>

#include "halvane/platform/bus/pointers_internal.h"

#include "tools/halvaned-sim/event_loop.h"
#include "tools/halvaned-sim/simulation.h"

namespace halvane::sim {

// A connection to the system bus, which DBUS_SYSTEM_BUS_ADDRESS may name. Throws BusError.
BusPointer openSystemBus();

// Sends a notification, of the daemon or as though it were, to the subscriber alone.
void sendEvent(sd_bus* bus, const IPCMessage& event, const std::string& subscriber);

class Service {
  public:
    // What happens to it in the loop, when there is nobody to answer.
    struct Handlers {
        // The bus is gone, or cannot be joined again.
        std::function<void()> onLoss;
        // A fault had it leave the bus, and it came back without the daemon's name: takeName() says
        // why.
        std::function<void(const std::string& reason)> onNameless;
    };

    // Joins the bus, and owns the daemon's name there. Throws BusError where that fails.
    Service(sd_event* event, Simulation& simulation, Handlers handlers);
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;

    // Leaves the bus, with everything sent.
    ~Service();

    // Tells the subscribers what has happened. When it returns the bus has it all.
    void deliver();

    // Gives up the daemon's name, or owns it again. Answers why not; empty where it was done.
    std::string dropName();
    std::string takeName();

    // Leaves the bus, and comes back as another connection, without subscribers. Answers as
    // takeName(); where the bus is gone the loss is handled.
    std::string restart();

  private:
    void join();
    void leave();
    void publish();
    void watch();
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
