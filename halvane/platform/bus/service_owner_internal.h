// Tracks the owner of a service's name on the bus, whose events are the service's.
//
// A bus reports changes of the owner, and on request the current owner. Its reports and the owners'
// messages come in the order in which everything happened. ServiceLink asks for the owner first and
// for the service's messages second, so no message comes before the first report.
//
// Threads: only one thread at a time may use an object.
#ifndef HALVANE_PLATFORM_BUS_SERVICE_OWNER_INTERNAL_H
#define HALVANE_PLATFORM_BUS_SERVICE_OWNER_INTERNAL_H

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/bus/service_event.h"

namespace halvane {

class ServiceOwner {
  public:
    // Receives the owner's messages, ServiceAppeared, and Interrupted.
    using EventSink = std::function<void(ServiceEvent)>;

    // Reads a received message; absent if it cannot be read.
    using Reading = std::function<std::optional<IPCMessage>()>;

    explicit ServiceOwner(EventSink sink) : sink_(std::move(sink)) {}

    // The bus has named the owner. Here and below, an empty name means nobody.
    void answered(std::string_view owner);

    // The bus has reported a change of the owner.
    void changed(std::string_view before, std::string_view now);

    // A message has arrived that claims to be the service's. `sender` is the bus's unique name for
    // its sender, which nobody else can have. Since anybody may send messages in any number, `read`
    // is called only for the owner's.
    void received(std::string_view sender, const Reading& read);

  private:
    void become(std::string_view owner);

    EventSink sink_;
    std::optional<std::string> owner_;  // absent before the first report
};

}  // namespace halvane

#endif
