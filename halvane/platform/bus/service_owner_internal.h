// Who owns a service's name on the bus, and so whose events are the service's.
//
// A bus tells of changes, and on request who the owner is, in the order in which it all happened
// and between the messages of the owners. Who asks for the service's messages after he has asked
// for the owner, as ServiceLink does, gets none of them before the first word on the owner.
//
// Threads: used by one at a time.
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
    // What becomes of it: messages of the owner, the service appearing, and Interrupted.
    using EventSink = std::function<void(ServiceEvent)>;

    // Reads a message that has arrived; absent where it is none that can be read.
    using Reading = std::function<std::optional<IPCMessage>()>;

    explicit ServiceOwner(EventSink sink) : sink_(std::move(sink)) {}

    // The bus has answered who the owner is. Empty is nobody, here and below.
    void answered(std::string_view owner);

    // The bus has told of a change.
    void changed(std::string_view before, std::string_view now);

    // Somebody has sent a message that claims to be the service's. `sender` is the bus's own name
    // for who it is, which nobody else can bear. Anybody may send as much as the bus takes, so that
    // `read` is called for the owner's messages alone.
    void received(std::string_view sender, const Reading& read);

  private:
    void become(std::string_view owner);

    EventSink sink_;
    std::optional<std::string> owner_;  // absent before the first word
};

}  // namespace halvane

#endif
