#include "halvane/platform/bus/service_connection.h"

#include <chrono>
#include <mutex>
#include <new>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <variant>

#include "halvane/base/result.h"
#include "halvane/platform/bus/address_internal.h"
#include "halvane/platform/bus/message_check_internal.h"
#include "halvane/platform/bus/service_link_internal.h"
#include "halvane/platform/bus/service_mailbox_internal.h"
#include "halvane/platform/os/callback_gate_internal.h"
#include "halvane/platform/os/process_internal.h"
#include "halvane/platform/os/thread_internal.h"

namespace halvane {

namespace {

constexpr std::size_t kHeaderRoom = 2048;

// How long the connection waits for memory before it tries again.
constexpr std::chrono::milliseconds kMemoryWait{1};

// How many messages are read before requests are sent.
constexpr int kMessagesAtOnce = 64;

ServiceError invalidError() {
    return {ServiceError::Kind::Invalid, "the connection to the service is invalid"};
}

// Whether the reply is small enough to be handled while the bus waits.
bool isSmall(const ServiceReply& reply) {
    constexpr std::size_t kMost = 65536;
    if (!reply) return reply.error().text.size() <= kMost;
    return checkBusMessage(*reply, kMost).refusal.empty();
}

// The gate of the connection that the calling thread serves; null on any other thread.
thread_local const CallbackGate* servedGate = nullptr;

// Returns work that calls `handler` with `argument` if the gate is open. The handler is destroyed
// before its callback counts as finished.
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

// Outlives a connection that is destroyed on the thread that serves it: a handler that is dropped
// there may have owned the connection.
class HALVANE_HIDDEN ServiceConnection::Core
    : public std::enable_shared_from_this<ServiceConnection::Core> {
  public:
    Core(std::string serviceName, SerialQueue::Handle targetQueue)
        : serviceName_(std::move(serviceName)), targetQueue_(std::move(targetQueue)) {}

    void setPrivileged(bool isPrivileged) {
        const std::lock_guard lock(mutex_);
        if (state_ == State::Idle) isPrivileged_ = isPrivileged;
    }

    void setBusAddress(std::string address) {
        const std::lock_guard lock(mutex_);
        if (state_ == State::Idle) busAddress_ = std::move(address);
    }

    void setEventHandler(EventHandler handler) {
        const std::lock_guard lock(mutex_);
        if (state_ != State::Idle) return;
        eventHandler_ = handler ? std::make_shared<EventHandler>(std::move(handler)) : nullptr;
    }

    void setAbsenceHandler(std::function<void()> handler) {
        const std::lock_guard lock(mutex_);
        if (state_ == State::Idle) absenceHandler_ = std::move(handler);
    }

    bool isInHomeProcess() const { return home_.isCurrent(); }

    void resume() {
        if (leaveIdle() && !start()) end();
    }

    void send(IPCMessage message, SerialQueue::Handle replyQueue, ReplyHandler handler,
              ReplyThread thread) {
        ServiceLink::Answer answer = [gate = gate_, queue = std::move(replyQueue),
                                      handler = std::move(handler),
                                      thread](ServiceReply reply) mutable {
            if (!handler) return;
            const bool mayRunHere =
                thread == ReplyThread::Any && servedGate == gate.get() && isSmall(reply);
            auto call = gatedCall(gate, std::move(handler), std::move(reply));
            if (mayRunHere) {
                queue.runOrAsync(std::move(call));
            } else {
                queue.async(std::move(call));
            }
        };
        post(std::move(message), std::move(answer));
    }

    void sendAtOnce(IPCMessage message, ReplyHandler handler) {
        post(std::move(message),
             [gate = gate_, handler = std::move(handler)](ServiceReply reply) mutable {
                 gatedCall(std::move(gate), std::move(handler), std::move(reply))();
             });
    }

    void cancel() {
        mailbox_.stop();
        if (leaveIdle()) end();
    }

    // For another process, where nothing here may be used or destroyed.
    void abandon() { self_ = shared_from_this(); }

    void destroy() {
        gate_->close();
        mailbox_.stop();
        std::thread thread = takeThread();
        if (!thread.joinable()) return;
        if (thread.get_id() == std::this_thread::get_id()) {
            thread.detach();
        } else {
            thread.join();
        }
    }

  private:
    enum class State { Idle, Resumed };

    void post(IPCMessage message, ServiceLink::Answer answer) {
        const auto check = checkBusMessage(message, kServiceMessageLimit - kHeaderRoom);
        if (!check.refusal.empty()) {
            answer(Unexpected(ServiceError{ServiceError::Kind::Other, std::string(check.refusal),
                                           ServiceError::Cause::Unsendable}));
            return;
        }
        ServiceRequest request = {std::move(message), std::move(answer)};
        if (!mailbox_.put(request)) request.answer(Unexpected(invalidError()));
    }

    // Returns false if this has happened before. The setters have no effect any more.
    bool leaveIdle() {
        const std::lock_guard lock(mutex_);
        return std::exchange(state_, State::Resumed) == State::Idle;
    }

    bool start() {
        try {
            const auto names = ServiceNames::of(serviceName_);
            const auto address = busAddress();
            if (!names || !address || !mailbox_.wake()) return false;
            std::shared_ptr<ServiceLink> link = ServiceLink::open(
                *names, *address, [this](ServiceEvent event) { report(std::move(event)); },
                [this] { insist([this] { postAbsence(); }); });
            if (!link) return false;
            const std::lock_guard lock(mutex_);
            thread_ =
                startThread(serviceName_, [self = shared_from_this(), link = std::move(link)] {
                    servedGate = self->gate_.get();
                    self->serve(*link);
                    link->close([&](ServiceLink::Answer& answer) { self->tellEnd(answer); });
                    self->end();
                });
        } catch (const std::bad_alloc&) {
            return false;
        }
        return true;
    }

    std::optional<std::string> busAddress() const {
        if (!busAddress_.empty()) return busAddress_;
        return isPrivileged_ ? systemBusAddress() : sessionBusAddress();
    }

    // A handler may destroy the connection while another thread is still inside resume().
    std::thread takeThread() {
        const std::lock_guard lock(mutex_);
        return std::move(thread_);
    }

    // Runs until the connection fails or ends.
    void serve(ServiceLink& link) {
        bool hasInput = true;
        while (link.isOpen()) {
            if (hasInput) hasInput = link.process(kMessagesAtOnce);
            auto requests = mailbox_.take();
            if (!requests) return;
            for (auto& request : *requests) send(link, request);
            if (!hasInput && link.isOpen()) hasInput = link.wait(mailbox_.wake());
        }
    }

    // If memory is short, the request is dropped with its handler.
    static void send(ServiceLink& link, ServiceRequest& request) {
        try {
            link.send(request.message, std::move(request.answer));
        } catch (const std::bad_alloc&) {
        }
    }

    // Replies to the pending requests with errors and reports the last event.
    void end() {
        for (auto& request : mailbox_.close()) tellEnd(request.answer);
        insist([this] { postEvent(invalidError()); });
        eventHandler_.reset();
        absenceHandler_ = nullptr;
    }

    // Once the gate is closed, handlers are destroyed without being called.
    void tellEnd(ServiceLink::Answer& answer) {
        const ServiceLink::Answer last = std::move(answer);
        if (gate_->isClosed()) return;
        try {
            last(Unexpected(invalidError()));
        } catch (const std::bad_alloc&) {
        }
    }

    // If memory is short, a message is dropped.
    void report(ServiceEvent event) {
        if (!std::holds_alternative<IPCMessage>(event)) return insist([&] { postEvent(event); });
        try {
            postEvent(std::move(event));
        } catch (const std::bad_alloc&) {
        }
    }

    // Tries again while memory is short: the target must learn of every change. Only the thread
    // that serves the connection waits; on another thread one attempt is made.
    template <typename Attempt>
    void insist(Attempt attempt) {
        do {
            try {
                return attempt();
            } catch (const std::bad_alloc&) {
                if (servedGate != gate_.get()) return;
                std::this_thread::sleep_for(kMemoryWait);
            }
        } while (!gate_->isClosed());
    }

    void postEvent(ServiceEvent event) {
        if (!eventHandler_) return;
        const auto call = [handler = eventHandler_](ServiceEvent arrived) {
            (*handler)(std::move(arrived));
        };
        targetQueue_.async(gatedCall(gate_, call, std::move(event)));
    }

    void postAbsence() {
        if (!absenceHandler_) return;
        const auto call = [handler = absenceHandler_](int) { handler(); };
        targetQueue_.async(gatedCall(gate_, call, 0));
    }

    const HomeProcess home_;
    const std::string serviceName_;
    const SerialQueue::Handle targetQueue_;
    const std::shared_ptr<CallbackGate> gate_ = std::make_shared<CallbackGate>();
    ServiceMailbox mailbox_;

    std::mutex mutex_;
    State state_ = State::Idle;
    std::thread thread_;
    // While the connection is idle, the mutex guards these too. Then they belong to the thread in
    // resume(), and then to the thread that serves the connection.
    bool isPrivileged_ = false;
    std::string busAddress_;  // empty: the address comes from the environment
    std::function<void()> absenceHandler_;
    std::shared_ptr<EventHandler> eventHandler_;
    std::shared_ptr<Core> self_;  // set once abandoned
};

std::unique_ptr<ServiceConnection> ServiceConnection::create(std::string serviceName,
                                                             const SerialQueue& targetQueue) {
    return std::unique_ptr<ServiceConnection>(new ServiceConnection(
        std::make_shared<Core>(std::move(serviceName), targetQueue.handle())));
}

ServiceConnection::ServiceConnection(std::shared_ptr<Core> core) : core_(std::move(core)) {}

ServiceConnection::~ServiceConnection() {
    if (core_->isInHomeProcess()) {
        core_->destroy();
    } else {
        core_->abandon();
    }
}

// Another process lacks the thread that serves the connection and must not use the socket.

void ServiceConnection::setPrivileged(bool isPrivileged) {
    if (core_->isInHomeProcess()) core_->setPrivileged(isPrivileged);
}

void ServiceConnection::setBusAddress(std::string address) {
    if (core_->isInHomeProcess()) core_->setBusAddress(std::move(address));
}

void ServiceConnection::setEventHandler(EventHandler handler) {
    if (core_->isInHomeProcess()) core_->setEventHandler(std::move(handler));
}

void ServiceConnection::setAbsenceHandler(std::function<void()> handler) {
    if (core_->isInHomeProcess()) core_->setAbsenceHandler(std::move(handler));
}

// A handler that is called from one of the next four functions may destroy the connection before
// they return. They therefore hold the object that they use.

void ServiceConnection::resume() {
    const auto core = core_;
    if (core->isInHomeProcess()) core->resume();
}

void ServiceConnection::sendMessageWithReply(IPCMessage message, const SerialQueue& replyQueue,
                                             ReplyHandler handler, ReplyThread thread) {
    const auto core = core_;
    if (core->isInHomeProcess()) {
        core->send(std::move(message), replyQueue.handle(), std::move(handler), thread);
    }
}

void ServiceConnection::sendMessageWithReplyAtOnce(IPCMessage message, ReplyHandler handler) {
    const auto core = core_;
    if (core->isInHomeProcess()) core->sendAtOnce(std::move(message), std::move(handler));
}

void ServiceConnection::cancel() {
    const auto core = core_;
    if (core->isInHomeProcess()) core->cancel();
}

}  // namespace halvane
