#include "halvane/platform/service_connection.h"

#include <mutex>
#include <new>
#include <thread>
#include <utility>
#include <vector>

#include "halvane/platform/bus_message_check_internal.h"
#include "halvane/platform/callback_gate_internal.h"
#include "halvane/platform/service_link_internal.h"
#include "halvane/platform/service_mailbox_internal.h"
#include "halvane/platform/thread_internal.h"

namespace halvane {

namespace {

constexpr std::size_t kHeaderRoom = 2048;

// How many messages are read before requests get their turn.
constexpr int kMessagesAtOnce = 64;

ServiceError invalidError() {
    return {ServiceError::Kind::Invalid, "the connection to the service is invalid"};
}

// Work that calls `handler` with `argument` if the gate lets it. What the handler holds is gone
// before its callback counts as over.
template <typename Handler, typename Argument>
SerialQueue::Work gatedCall(std::shared_ptr<CallbackGate> gate, Handler handler,
                            Argument argument) {
    return [gate = std::move(gate), handler = std::move(handler),
            argument = std::move(argument)]() mutable {
        const CallbackGate::Pass pass(*gate);
        if (!pass) return;
        const auto current = std::move(handler);
        current(std::move(argument));
    };
}

}  // namespace

// Outlives the connection where that is destroyed on the thread that serves it: a handler that is
// dropped there may have held the connection.
class ServiceConnection::Core : public std::enable_shared_from_this<ServiceConnection::Core> {
  public:
    Core(std::string serviceName, SerialQueue::Handle targetQueue)
        : serviceName_(std::move(serviceName)), targetQueue_(std::move(targetQueue)) {}

    void setPrivileged(bool isPrivileged) {
        const std::lock_guard lock(mutex_);
        if (state_ == State::Idle) isPrivileged_ = isPrivileged;
    }

    void setEventHandler(EventHandler handler) {
        const std::lock_guard lock(mutex_);
        if (state_ != State::Idle) return;
        eventHandler_ = handler ? std::make_shared<EventHandler>(std::move(handler)) : nullptr;
    }

    void resume() {
        if (leaveIdle() && !start()) end({});
    }

    void send(IPCMessage message, SerialQueue::Handle replyQueue, ReplyHandler handler) {
        ServiceLink::Answer answer = [gate = gate_, queue = std::move(replyQueue),
                                      handler = std::move(handler)](ServiceReply reply) mutable {
            if (handler) queue.async(gatedCall(gate, std::move(handler), std::move(reply)));
        };
        const auto check = checkBusMessage(message, kServiceMessageLimit - kHeaderRoom);
        if (!check.refusal.empty()) {
            answer(ServiceError{ServiceError::Kind::Other, std::string(check.refusal)});
            return;
        }
        ServiceRequest request = {std::move(message), std::move(answer)};
        if (!mailbox_.put(request)) request.answer(invalidError());
    }

    void cancel() {
        mailbox_.stop();
        if (leaveIdle()) end({});
    }

    void destroy() {
        gate_->close();
        mailbox_.stop();
        if (!thread_.joinable()) return;
        if (thread_.get_id() == std::this_thread::get_id()) {
            thread_.detach();
        } else {
            thread_.join();
        }
    }

  private:
    enum class State { Idle, Resumed };

    // False where that has happened before. Afterwards what is set up changes no more.
    bool leaveIdle() {
        const std::lock_guard lock(mutex_);
        return std::exchange(state_, State::Resumed) == State::Idle;
    }

    bool start() {
        const auto names = ServiceNames::of(serviceName_);
        if (!names || !mailbox_.wake()) return false;
        std::shared_ptr<ServiceLink> link = ServiceLink::open(
            *names, isPrivileged_, [this](ServiceEvent event) { postEvent(std::move(event)); });
        if (!link) return false;
        try {
            thread_ =
                startThread(serviceName_, [self = shared_from_this(), link = std::move(link)] {
                    self->serve(*link);
                    self->end(link->takePending());
                });
        } catch (const std::bad_alloc&) {
            return false;
        }
        return true;
    }

    // Until the connection is of no use, or of no use any more.
    void serve(ServiceLink& link) {
        for (;;) {
            const bool hasMore = link.process(kMessagesAtOnce);
            if (!link.isOpen()) return;
            auto requests = mailbox_.take();
            if (!requests) return;
            for (auto& request : *requests) link.send(request.message, std::move(request.answer));
            if (!hasMore && requests->empty()) link.wait(mailbox_.wake());
        }
    }

    // Everything that waits is answered, and the last event told. Once the gate is closed nobody is
    // to be told anything: then all that is to be called is merely destroyed.
    void end(std::vector<ServiceLink::Answer> pending) {
        for (auto& request : mailbox_.close()) pending.push_back(std::move(request.answer));
        if (!gate_->isClosed()) {
            for (const auto& answer : pending) answer(invalidError());
        }
        postEvent(invalidError());
        eventHandler_.reset();
    }

    void postEvent(ServiceEvent event) {
        if (!eventHandler_) return;
        const auto call = [handler = eventHandler_](ServiceEvent arrived) {
            (*handler)(std::move(arrived));
        };
        targetQueue_.async(gatedCall(gate_, call, std::move(event)));
    }

    const std::string serviceName_;
    const SerialQueue::Handle targetQueue_;
    const std::shared_ptr<CallbackGate> gate_ = std::make_shared<CallbackGate>();
    ServiceMailbox mailbox_;

    std::mutex mutex_;  // of what follows, while it is idle
    State state_ = State::Idle;
    bool isPrivileged_ = false;
    std::shared_ptr<EventHandler> eventHandler_;
    std::thread thread_;
};

std::unique_ptr<ServiceConnection> ServiceConnection::create(std::string serviceName,
                                                             const SerialQueue& targetQueue) {
    return std::unique_ptr<ServiceConnection>(new ServiceConnection(
        std::make_shared<Core>(std::move(serviceName), targetQueue.handle())));
}

ServiceConnection::ServiceConnection(std::shared_ptr<Core> core) : core_(std::move(core)) {}

ServiceConnection::~ServiceConnection() {
    core_->destroy();
}

void ServiceConnection::setPrivileged(bool isPrivileged) {
    core_->setPrivileged(isPrivileged);
}

void ServiceConnection::setEventHandler(EventHandler handler) {
    core_->setEventHandler(std::move(handler));
}

void ServiceConnection::resume() {
    core_->resume();
}

void ServiceConnection::sendMessageWithReply(IPCMessage message, const SerialQueue& replyQueue,
                                             ReplyHandler handler) {
    core_->send(std::move(message), replyQueue.handle(), std::move(handler));
}

void ServiceConnection::cancel() {
    core_->cancel();
}

}  // namespace halvane
