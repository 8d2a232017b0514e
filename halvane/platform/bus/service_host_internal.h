// The other end of a ServiceConnection: owns a service's name on the system bus, receives requests
// and sends events (service_connection.h has their form on the bus).
//
// Threads: only the thread that runs the loop may use an object.
#ifndef HALVANE_PLATFORM_BUS_SERVICE_HOST_INTERNAL_H
#define HALVANE_PLATFORM_BUS_SERVICE_HOST_INTERNAL_H

#include <functional>
#include <memory>
#include <string>
#include <systemd/sd-bus.h>
#include <systemd/sd-event.h>

#include "halvane/base/result.h"
#include "halvane/platform/bus/event_loop_internal.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/bus/pointers_internal.h"
#include "halvane/platform/bus/service_names_internal.h"

namespace halvane {

// Connects to the system bus, which DBUS_SYSTEM_BUS_ADDRESS may name, or returns why that fails.
Result<BusPointer, std::string> openSystemBus();

// Sends an event of the service to one connection. Returns a negative errno value on failure.
// REQUIRES: checkBusMessage() does not refuse `event`.
int sendServiceEvent(sd_bus* bus, const ServiceNames& names, const IPCMessage& event,
                     const std::string& subscriber);

class ServiceHost {
  public:
    // A request that waits for its reply. It may outlive the host; a reply then goes nowhere. It
    // does not hold the content of the request, which may be large.
    struct PendingCall {
        sd_bus_message* request = nullptr;  // null once the handler of the request has returned
        BusMessagePointer reply;
        BusMessagePointer failure;  // instead of a reply that memory does not hold
    };
    using Call = std::shared_ptr<PendingCall>;

    // All are called from the loop, except `left`, which restart() and the destructor may call.
    // REQUIRES of each: throws nothing but std::bad_alloc.
    struct Handlers {
        std::function<void(const std::string& sender, const IPCMessage& request, const Call& call)>
            request;

        // A connection has left the bus. `name` is the one that only it had.
        std::function<void(const std::string& name)> departed;

        // This connection has left the bus, and every other one counts as unknown.
        std::function<void()> left;

        // The bus is gone, or cannot be joined again.
        std::function<void()> lost;

        // restartSoon() came back without the service's name. takeName() returns why.
        std::function<void(const std::string& reason)> nameless;
    };

    // `loop` has to outlive the host.
    // REQUIRES: D-Bus can express the service's name.
    ServiceHost(sd_event* loop, const std::string& serviceName, Handlers handlers);
    ServiceHost(const ServiceHost&) = delete;
    ServiceHost& operator=(const ServiceHost&) = delete;

    // Leaves the bus after sending everything.
    ~ServiceHost();

    // Joins the bus and owns the name there, or returns why that fails. The other functions require
    // that it has succeeded.
    Result<void, std::string> start();

    // Replies to a request. If memory does not hold the reply, the caller gets an error instead; if
    // the bus is gone, it gets nothing.
    // REQUIRES: `call` had no reply yet, and checkBusMessage() does not refuse `message`.
    static void reply(const Call& call, const IPCMessage& message);

    // Replies that memory does not hold the reply.
    // REQUIRES: `call` had no reply yet.
    static void replyFailure(const Call& call);

    // Replies with an error of D-Bus.
    // REQUIRES: `call` had no reply yet, and the handler of the request has not returned.
    static void replyError(const Call& call, const std::string& name, const std::string& text);

    // Sends an event to one connection.
    // REQUIRES: checkBusMessage() does not refuse `event`.
    void send(const IPCMessage& event, const std::string& subscriber);

    // Whether some thousand messages wait for the bus to take them.
    bool isCongested() const;

    // Returns when the bus has everything that was sent.
    void flush();

    // Gives up the name, or owns it again, or returns why that fails.
    Result<void, std::string> dropName();
    Result<void, std::string> takeName();

    // Leaves the bus, and comes back as another connection. Returns the same as takeName(). If the
    // bus is gone, calls `lost`.
    Result<void, std::string> restart();

    // Restarts once the loop has returned from its present work.
    void restartSoon();

  private:
    Result<void, std::string> join();
    void leave();
    Result<void, std::string> publish();
    Result<void, std::string> watch();
    void restartUnasked();

    static int requestArrived(sd_bus_message*, void* host, sd_bus_error*) noexcept;
    static int nameLeft(sd_bus_message*, void* host, sd_bus_error*) noexcept;
    static int disconnected(sd_bus_message*, void* host, sd_bus_error*) noexcept;
    static int restartIsDue(sd_event_source*, void* host) noexcept;

    sd_event* const loop_;
    const ServiceNames names_;
    const Handlers handlers_;
    BusPointer bus_;
    EventSourcePointer restart_;
};

}  // namespace halvane

#endif
