// A service as seen over one connection to a bus.
//
// Threads: only one thread at a time may use a link.
#ifndef HALVANE_PLATFORM_BUS_SERVICE_LINK_INTERNAL_H
#define HALVANE_PLATFORM_BUS_SERVICE_LINK_INTERNAL_H

#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <systemd/sd-bus.h>

#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/bus/pointers_internal.h"
#include "halvane/platform/bus/service_event.h"
#include "halvane/platform/bus/service_names_internal.h"
#include "halvane/platform/bus/service_owner_internal.h"
#include "halvane/platform/os/wake_event_internal.h"

namespace halvane {

class ServiceLink {
  public:
    using Answer = std::function<void(ServiceReply)>;

    // Begins to connect to the bus at a D-Bus address and to follow the service. It waits for
    // nothing, and returns null if this fails at once. process() passes events to `sink`, all but
    // Invalid. It calls `absence`, at most once, if the bus says at the beginning that nobody owns
    // the service's name. Each call of process() ends with one of `pause`.
    // REQUIRES: `sink`, `absence` and `pause` throw nothing.
    static std::unique_ptr<ServiceLink> open(const ServiceNames& names, const std::string& address,
                                             ServiceOwner::EventSink sink,
                                             std::function<void()> absence = nullptr,
                                             std::function<void()> pause = nullptr);

    ServiceLink(const ServiceLink&) = delete;
    ServiceLink& operator=(const ServiceLink&) = delete;

    // Closes the connection. Pending requests get no reply.
    ~ServiceLink();

    // Whether the bus is connected or still may become so.
    bool isOpen() const;

    // Whether the bus has admitted the connection. From then on its descriptor stays the same, and
    // it has no deadline.
    bool isReady() const;

    // Sends a request. process() passes the reply to `answer`; if the request cannot be sent,
    // `answer` is called at once. Throws std::bad_alloc without sending the request. If memory
    // cannot hold the reply, it is dropped and `answer` is destroyed.
    void send(const IPCMessage& message, Answer answer);

    // Handles up to `most` received messages. Returns whether there may be more.
    bool process(int most);

    // Waits until there is something to process or `wake` is signalled, and clears `wake`. Returns
    // whether there is something to process.
    bool wait(WakeEvent& wake) const;

    // For a wait of one's own: the bus's descriptor, and the events of poll() upon which there is
    // something to process.
    int descriptor() const;
    short events() const;

    // Returns when process() has something to do even if nothing arrives, in microseconds of the
    // monotonic clock; kNever if that never happens.
    static constexpr std::uint64_t kNever = UINT64_MAX;
    std::uint64_t deadline() const;

    // Closes the connection and calls `take` with the handler of each pending request, in the order
    // of the requests. They get no replies any more.
    // REQUIRES: `take` throws nothing.
    void close(const std::function<void(Answer&)>& take);

  private:
    struct Pending {
        ServiceLink* link;
        Answer answer;
        std::list<Pending>::iterator self;
    };

    ServiceLink(ServiceNames names, BusPointer bus, ServiceOwner::EventSink sink,
                std::function<void()> absence, std::function<void()> pause);
    bool follow();
    bool processSome(int most);
    int call(const IPCMessage& message, Pending& pending);
    void fail();
    template <typename Note>
    void noteOwner(Note note);

    static int ownerAnswered(sd_bus_message* message, void* link, sd_bus_error*) noexcept;
    static int ownerChanged(sd_bus_message* message, void* link, sd_bus_error*) noexcept;
    static int eventArrived(sd_bus_message* message, void* link, sd_bus_error*) noexcept;
    static int matchAnswered(sd_bus_message* message, void* link, sd_bus_error*) noexcept;
    static int replyArrived(sd_bus_message* message, void* pending, sd_bus_error*) noexcept;

    const ServiceNames names_;
    ServiceOwner owner_;
    const std::function<void()> absence_;
    const std::function<void()> pause_;
    std::list<Pending> pending_;
    bool hasFailed_ = false;
    BusPointer bus_;  // closed first: its callbacks use the other members
};

}  // namespace halvane

#endif
