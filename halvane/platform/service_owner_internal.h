// Who owns a service's name on the bus, and so whose events are the service's.
//
// A bus tells of changes, and on request who the owner is, in the order in which it all happened
// and between the messages of the owners. Only the first word on the owner may come after messages
// of the service: those are kept until then, and the word tells who was the owner when they were
// sent, which is the owner before a change, or the one that is named as the answer.
//
// Threads: used by one at a time.
#ifndef HALVANE_PLATFORM_SERVICE_OWNER_INTERNAL_H
#define HALVANE_PLATFORM_SERVICE_OWNER_INTERNAL_H

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/platform/service_event.h"

namespace halvane {

class ServiceOwner {
  public:
    // What becomes of it: messages of the owner, the service appearing, and Interrupted.
    using EventSink = std::function<void(ServiceEvent)>;

    explicit ServiceOwner(EventSink sink) : sink_(std::move(sink)) {}

    // The bus has answered who the owner is. Empty is nobody, here and below.
    void answered(std::string_view owner);

    // The bus has told of a change.
    void changed(std::string_view before, std::string_view now);

    // Somebody has sent a message that claims to be the service's. `sender` is the bus's own name
    // for who it is, which nobody else can bear.
    void received(std::string_view sender, IPCMessage message);

  private:
    void settle(std::string_view owner);
    void become(std::string_view owner);

    EventSink sink_;
    std::optional<std::string> owner_;  // absent before the first word
    std::vector<std::pair<std::string, IPCMessage>> early_;
};

}  // namespace halvane

#endif
