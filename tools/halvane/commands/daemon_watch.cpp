#include "tools/halvane/commands/daemon_watch.h"

#include <string>
#include <utility>
#include <variant>

#include "halvane/base/property_list_value.h"
#include "halvane/model/daemon_service.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/bus/service_event.h"
#include "halvane/platform/os/counting_semaphore.h"

namespace halvane::tool {

// Waited for until it is answered, or it is clear that it never will be: also where its handler is
// gone, which alone holds it.
class DaemonWatch::Question {
  public:
    struct End {
        CountingSemaphore settled{0};
        bool isAnswered = false;
    };

    explicit Question(std::shared_ptr<End> end) : end_(std::move(end)) {}
    Question(const Question&) = delete;
    Question& operator=(const Question&) = delete;
    ~Question() { settle(false); }

    // The first time counts.
    void settle(bool isAnswered) {
        if (std::exchange(isSettled_, true)) return;
        end_->isAnswered = isAnswered;
        end_->settled.signal();
    }

  private:
    const std::shared_ptr<End> end_;
    bool isSettled_ = false;
};

DaemonWatch::DaemonWatch()
    : queue_(std::string(kDaemonServiceName) + ".watch.queue"),
      connection_(ServiceConnection::create(kDaemonServiceName, queue_)) {
    connection_->setPrivileged(true);
    connection_->setEventHandler([this](const ServiceEvent& event) {
        if (!std::holds_alternative<ServiceError>(event)) return;
        hasLeft_ = true;
        if (const auto question = question_.lock()) question->settle(false);
    });
    connection_->resume();
    isWatching_ = ask();
}

bool DaemonWatch::hasDaemonLeft() {
    if (isWatching_ && !hasLeft_) ask();
    return isWatching_ && hasLeft_;
}

// The bus tells that the daemon left before it carries anything else, and the queue is one for
// both: when the answer is handled, what happened before the question has been.
bool DaemonWatch::ask() {
    const auto end = std::make_shared<Question::End>();
    auto question = std::make_shared<Question>(end);
    queue_.async([this, question = std::weak_ptr(question)] {
        question_ = question;
        const auto asked = question.lock();
        if (asked && hasLeft_) asked->settle(false);
    });
    PropertyListDictionary message;
    message.set("command", "queryInterfaceList");
    connection_->sendMessageWithReply(
        IPCMessage(std::move(message)), queue_,
        [question = std::move(question)](const ServiceReply& reply) {
            question->settle(std::holds_alternative<IPCMessage>(reply));
        });
    end->settled.wait();
    return end->isAnswered;
}

}  // namespace halvane::tool
