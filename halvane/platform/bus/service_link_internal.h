// A service as it is seen over one connection to a bus.
//
// Threads: used by one at a time.
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
#include "halvane/platform/bus/service_owner_internal.h"
#include "halvane/platform/os/wake_event_internal.h"

namespace halvane {

// What a service's name makes on the bus.
struct ServiceNames {
    std::string name;  // of the service, and of its interface
    std::string path;  // of its object

    // Absent for a name that D-Bus has no place for.
    static std::optional<ServiceNames> of(const std::string& serviceName);
};

class ServiceLink {
  public:
    using Answer = std::function<void(ServiceReply)>;

    // Begins to connect to the bus at a D-Bus address, and to follow the service; waits for
    // nothing. Null where that fails at once. Events go to `sink` from process(), all but Invalid.
    // `absence` is called from process(), once at most, if the bus says in the beginning that
    // nobody owns the service's name. REQUIRES: `sink` and `absence` throw nothing.
    static std::unique_ptr<ServiceLink> open(const ServiceNames& names, const std::string& address,
                                             ServiceOwner::EventSink sink,
                                             std::function<void()> absence = nullptr);

    ServiceLink(const ServiceLink&) = delete;
    ServiceLink& operator=(const ServiceLink&) = delete;

    // Closes the connection. What was not answered never is.
    ~ServiceLink();

    // Whether the bus is there, or may yet be.
    bool isOpen() const;

    // Sends a request whose reply goes to `answer`, from process(), or at once where it cannot be
    // sent. Throws std::bad_alloc instead, and has not sent it. A reply that memory does not hold
    // is dropped: `answer` is destroyed.
    void send(const IPCMessage& message, Answer answer);

    // Handles what has arrived, up to `most` messages. Whether more may be there.
    bool process(int most);

    // Waits until there is something to process, or `wake` is signalled, and clears that. Whether
    // there is something to process.
    bool wait(WakeEvent& wake) const;

    // When process() has something to do even though nothing arrives, in microseconds of the
    // monotonic clock; kNever: not at all.
    static constexpr std::uint64_t kNever = UINT64_MAX;
    std::uint64_t deadline() const;

    // Closes the connection, and calls `take` with each that waits for a reply, in order of their
    // requests; they get none any more.
    // REQUIRES: `take` throws nothing.
    void close(const std::function<void(Answer&)>& take);

  private:
    struct Pending {
        ServiceLink* link;
        Answer answer;
        std::list<Pending>::iterator self;
    };

    ServiceLink(ServiceNames names, BusPointer bus, ServiceOwner::EventSink sink,
                std::function<void()> absence);
    bool follow();
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
    std::list<Pending> pending_;
    bool hasFailed_ = false;
    BusPointer bus_;  // closed first: its callbacks know the rest
};

}  // namespace halvane

#endif
