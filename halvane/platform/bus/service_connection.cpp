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
#include "halvane/platform/bus/awaited_reply_internal.h"
#include "halvane/platform/bus/message_check_internal.h"
#include "halvane/platform/bus/service_link_internal.h"
#include "halvane/platform/bus/service_mailbox_internal.h"
#include "halvane/platform/bus/shared_link_internal.h"
#include "halvane/platform/os/callback_gate_internal.h"
#include "halvane/platform/os/process_internal.h"
#include "halvane/platform/os/thread_internal.h"

namespace halvane {

namespace {

constexpr std::size_t kHeaderRoom = 2048;

// How long the connection waits for memory before it tries again.
constexpr std::chrono::milliseconds kMemoryWait{1};

ServiceError invalidError() {
    return {ServiceError::Kind::Invalid, "the connection to the service is invalid"};
}

// Whether the reply is small enough to be handled while the bus waits.
bool isSmall(const ServiceReply& reply) {
    constexpr std::size_t kMost = 65536;
    if (!reply) return reply.error().text.size() <= kMost;
    return checkBusMessage(*reply, kMost).refusal.empty();
}

// While an object lives, its thread serves the connection that has the gate: as the connection's
// own thread, or while it waits for a reply.
class Service {
  public:
    enum class Thread { Own, Waiting };

    Service(const CallbackGate& gate, Thread thread) : gate_(gate), thread_(thread) {
        innermost = this;
    }
    Service(const Service&) = delete;
    Service& operator=(const Service&) = delete;
    ~Service() { innermost = outer_; }

    // Whether the calling thread serves the connection that has the gate.
    static bool isOf(const CallbackGate& gate) { return find(gate) != nullptr; }

    // Whether it is that connection's own thread.
    static bool isOnOwnThread(const CallbackGate& gate) {
        const Service* service = find(gate);
        return service != nullptr && service->thread_ == Thread::Own;
    }

  private:
    static const Service* find(const CallbackGate& gate) {
        const Service* service = innermost;
        while (service != nullptr && &service->gate_ != &gate) service = service->outer_;
        return service;
    }

    static thread_local const Service* innermost;

    const CallbackGate& gate_;
    const Thread thread_;
    const Service* const outer_ = innermost;
};

thread_local const Service* Service::innermost = nullptr;

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
                thread == ReplyThread::Any && Service::isOnOwnThread(*gate) && isSmall(reply);
            auto call = gatedCall(gate, std::move(handler), std::move(reply));
            if (mayRunHere) {
                queue.runOrAsync(std::move(call));
            } else {
                queue.async(std::move(call));
            }
        };
        post({std::move(message), std::move(answer)});
    }

    void sendAtOnce(IPCMessage message, ReplyHandler handler) {
        post({std::move(message),
              [gate = gate_, handler = std::move(handler)](ServiceReply reply) mutable {
                  gatedCall(std::move(gate), std::move(handler), std::move(reply))();
              }});
    }

    std::shared_ptr<AwaitedReply> request(IPCMessage message) {
        auto awaited = std::make_shared<AwaitedReply>();
        const auto owed = std::make_shared<OwedReply>(awaited);
        post({std::move(message), [owed](ServiceReply reply) { owed->set(std::move(reply)); }},
             &ServiceMailbox::putQuietly);
        return awaited;
    }

    void wait(AwaitedReply& reply, const WaitEnd& end) {
        const Service service(*gate_, Service::Thread::Waiting);
        link_.wait(reply, end);
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
        if (Service::isOf(*gate_)) {
            thread.detach();
        } else {
            thread.join();
        }
    }

  private:
    enum class State { Idle, Resumed };

    using Put = bool (ServiceMailbox::*)(ServiceRequest&);

    void post(ServiceRequest request, Put put = &ServiceMailbox::put) {
        const auto check = checkBusMessage(request.message, kServiceMessageLimit - kHeaderRoom);
        if (!check.refusal.empty()) {
            request.answer(
                Unexpected(ServiceError{ServiceError::Kind::Other, std::string(check.refusal),
                                        ServiceError::Cause::Unsendable}));
        } else if (!(mailbox_.*put)(request)) {
            request.answer(Unexpected(invalidError()));
        }
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
            if (!names || !address || !mailbox_.wake() || !link_) return false;
            auto opened = ServiceLink::open(
                *names, *address, [this](ServiceEvent event) { report(std::move(event)); },
                [this] { insist([this] { postAbsence(); }); }, [this] { targetQueue_.wake(); });
            if (!opened) return false;
            const auto link = std::make_shared<std::unique_ptr<ServiceLink>>(std::move(opened));
            const std::lock_guard lock(mutex_);
            thread_ = startThread(
                serviceName_, [self = shared_from_this(), link] { self->serve(std::move(*link)); });
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

    // Runs on the connection's own thread, until the connection fails or ends.
    void serve(std::unique_ptr<ServiceLink> link) {
        const Service service(*gate_, Service::Thread::Own);
        link = link_.keep(std::move(link));
        link->close([this](ServiceLink::Answer& answer) { tellEnd(answer); });
        end();
    }

    // Replies to the pending requests with errors and reports the last event.
    void end() {
        for (auto& request : mailbox_.close()) tellEnd(request.answer);
        insist([this] { postEvent(invalidError()); });
        targetQueue_.wake();
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

    // Tries again while memory is short: the target must learn of every change. Only a thread that
    // serves the connection waits; on another thread one attempt is made.
    template <typename Attempt>
    void insist(Attempt attempt) {
        do {
            try {
                return attempt();
            } catch (const std::bad_alloc&) {
                targetQueue_.wake();  // what is queued may give memory back
                if (!Service::isOf(*gate_)) return;
                std::this_thread::sleep_for(kMemoryWait);
            }
        } while (!gate_->isClosed());
    }

    // The target's queue is woken after the last of those that have arrived together.
    void postEvent(ServiceEvent event) {
        if (!eventHandler_) return;
        const auto call = [handler = eventHandler_](ServiceEvent arrived) {
            (*handler)(std::move(arrived));
        };
        targetQueue_.append(gatedCall(gate_, call, std::move(event)));
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
    SharedLink link_{mailbox_};

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

ServiceConnection::Request ServiceConnection::request(IPCMessage message) {
    if (core_->isInHomeProcess()) return {core_, core_->request(std::move(message))};
    auto lost = std::make_shared<AwaitedReply>();
    lost->lose();
    return {core_, std::move(lost)};
}

ServiceConnection::Request::Request(std::shared_ptr<Core> core, std::shared_ptr<AwaitedReply> reply)
    : core_(std::move(core)), reply_(std::move(reply)) {}

bool ServiceConnection::Request::wait(
    const std::optional<std::chrono::steady_clock::time_point>& end) {
    if (core_->isInHomeProcess()) core_->wait(*reply_, end);
    return reply_->isSettled();
}

std::optional<ServiceReply> ServiceConnection::Request::takeReply() {
    return reply_->take();
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
