#include "tools/halvane/daemon_watch.h"

#include <future>
#include <string>
#include <utility>
#include <variant>

#include "halvane/base/daemon_service.h"

namespace halvane::tool {

DaemonWatch::DaemonWatch()
    : queue_(std::string(kDaemonServiceName) + ".watch.queue"),
      connection_(ServiceConnection::create(kDaemonServiceName, queue_)) {
    connection_->setPrivileged(true);
    connection_->setEventHandler([this](const ServiceEvent& event) {
        if (std::holds_alternative<ServiceError>(event)) hasLeft_ = true;
    });
    connection_->resume();
    ask();
}

bool DaemonWatch::hasDaemonLeft() {
    ask();
    return hasLeft_;
}

// The bus tells that the daemon left before it carries anything else, and the queue is one for
// both: when the answer is handled, what happened before the question has been.
void DaemonWatch::ask() {
    const auto answered = std::make_shared<std::promise<void>>();
    PropertyListDictionary question;
    question.set("command", "queryInterfaceList");
    connection_->sendMessageWithReply(IPCMessage(std::move(question)), queue_,
                                      [answered](const ServiceReply&) { answered->set_value(); });
    answered->get_future().wait();
}

}  // namespace halvane::tool
