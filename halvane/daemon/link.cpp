#include <new>
#include <utility>
#include <variant>

#include "halvane/base/result.h"
#include "halvane/daemon/link_internal.h"
#include "halvane/daemon/notification_internal.h"
#include "halvane/daemon/requests_internal.h"
#include "halvane/model/daemon_service.h"
#include "halvane/platform/bus/address_internal.h"

namespace halvane {

namespace {

using Kind = DaemonError::Kind;

constexpr const char* kQueueLabel = HALVANE_DAEMON_SERVICE_NAME ".events";
constexpr const char* kRetryLabel = HALVANE_DAEMON_SERVICE_NAME ".retry";

Kind kindOf(ServiceError::Cause cause) {
    switch (cause) {
        case ServiceError::Cause::NoBus:
            return Kind::BusGone;
        case ServiceError::Cause::NoService:
            return Kind::NoDaemon;
        case ServiceError::Cause::Unreadable:
            return Kind::Undecodable;
        case ServiceError::Cause::Unsendable:
            return Kind::Unsendable;
        case ServiceError::Cause::Forbidden:
            return Kind::Denied;
        case ServiceError::Cause::Refused:
        case ServiceError::Cause::Unknown:
            break;
    }
    return Kind::Failed;
}

DaemonReply replyOf(ServiceReply reply, bool isEnding) {
    if (reply) return *std::move(reply);
    const ServiceError& error = reply.error();
    if (error.kind == ServiceError::Kind::Interrupted) return daemonFailure(Kind::DaemonLeft);
    if (error.kind == ServiceError::Kind::Other) return daemonFailure(kindOf(error.cause));
    return daemonFailure(isEnding ? Kind::Ending : Kind::BusGone);
}

}  // namespace

DaemonLink::DaemonLink(DaemonEvents events) : DaemonLink(kQueueLabel, nullptr) {
    events_ = std::make_shared<const DaemonEvents>(std::move(events));
    retry_.emplace(kRetryLabel, [this] { reconnect(); });
}

// Only this constructor reads the environment, on the thread that creates the client.
DaemonLink::DaemonLink(const char* queueLabel, Receiver receiver)
    : busAddress_(systemBusAddress()),
      xpcConnectionQueue_(std::in_place, queueLabel),
      queueHandle_(xpcConnectionQueue_->handle()),
      receiver_(std::move(receiver)) {}

DaemonLink::~DaemonLink() {
    end();
}

// Any function called from the queue may end the link. Afterwards only members of `self` are used.
std::unique_ptr<ServiceConnection> DaemonLink::makeConnection() {
    auto connection = ServiceConnection::create(kDaemonServiceName, *xpcConnectionQueue_);
    connection->setPrivileged(true);
    connection->setBusAddress(busAddress_);
    connection->setEventHandler([weak = weak_from_this()](const ServiceEvent& event) {
        if (const auto self = weak.lock()) self->receive(event);
    });
    if (receiver_) return connection;
    connection->setAbsenceHandler([weak = weak_from_this()] {
        if (const auto self = weak.lock()) self->lostDaemon();
    });
    return connection;
}

// lostBus() destroys the connection, and can run only once it is resumed. end() destroys it too,
// after waiting for a running attempt to connect.
void DaemonLink::connect() {
    auto made = makeConnection();
    ServiceConnection* const connection = made.get();
    {
        const std::lock_guard lock(mutex_);
        if (state_ == DaemonState::Ending) return;
        xpcConnection_ = std::move(made);
    }
    connection->resume();
}

void DaemonLink::reconnect() {
    try {
        connect();
    } catch (const std::bad_alloc&) {
        const std::lock_guard lock(mutex_);
        retry_->schedule(backOff_.next());
    }
}

// Releases pending requests, on the queue and on other threads, before it waits for them.
void DaemonLink::end() {
    if (!isInHomeProcess()) {
        self_ = shared_from_this();
        return;
    }
    if (!enter(DaemonState::Ending)) return;
    completions_->beginEnd();
    if (retry_) retry_->stop();
    std::unique_ptr<ServiceConnection> connection;
    std::shared_ptr<const DaemonEvents> events;
    {
        const std::lock_guard lock(mutex_);
        connection = std::move(xpcConnection_);
        events = std::move(events_);
    }
    if (connection) connection->cancel();
    connection.reset();
    xpcConnectionQueue_.reset();
    completions_->finishAll();
}

// The connection stays until the end: destroying it now would drop replies that have arrived but
// were not yet handled. Nobody handles the event that cancelling causes.
void DaemonLink::release() {
    if (!isInHomeProcess()) return;
    enter(DaemonState::BusGone);
    const std::lock_guard lock(mutex_);
    if (xpcConnection_) xpcConnection_->cancel();
}

DaemonState DaemonLink::state() const {
    if (!isInHomeProcess()) return DaemonState::Ending;
    const std::lock_guard lock(mutex_);
    return state_;
}

// --- Requests ---

DaemonError DaemonLink::failure() const {
    return {hasEnded() ? Kind::Ending : Kind::BusGone};
}

// For a wish whose request is not sent. The daemon learns of it when it next appears.
void DaemonLink::remember(Wish wish) {
    if (!wish || !isInHomeProcess()) return;
    const std::lock_guard lock(mutex_);
    isSubscribed_ = *wish;
    isSubscriptionLost_ = true;
}

// Sets the wish and sends its request in one step; otherwise another thread's request could reach
// the daemon last. Returns false if nothing can be sent; a connection that is only being tried
// takes nothing. No foreign function is called under the lock: replies go to blocked threads or to
// the queue.
template <typename Send>
bool DaemonLink::post(Wish wish, Send send) {
    const std::lock_guard lock(mutex_);
    if (state_ == DaemonState::Ending) return false;
    if (wish) isSubscribed_ = *wish;
    if (state_ == DaemonState::BusGone || !xpcConnection_) return false;
    send(*xpcConnection_);
    if (wish && state_ != DaemonState::DaemonGone) isSubscriptionLost_ = false;
    return true;
}

// After the wait the link may be gone.
DaemonReply DaemonLink::request(IPCMessage message, const DaemonDeadline& deadline, Wish wish) {
    if (!isInHomeProcess()) return daemonFailure(Kind::Ending);
    if (deadline.hasPassed()) {
        remember(wish);
        return daemonFailure(Kind::DeadlinePassed);
    }
    const auto others = completions_;
    const unsigned losses = others->losses();
    std::optional<ServiceConnection::Request> request;
    const bool isPosted = post(wish, [&](ServiceConnection& connection) {
        request.emplace(connection.request(std::move(message)));
    });
    if (!isPosted) return Unexpected(failure());
    if (!request->wait(deadline.end())) return daemonFailure(Kind::DeadlinePassed);
    auto reply = request->takeReply();
    return reply ? replyOf(*std::move(reply), others->isEnding()) : others->lostReply(losses);
}

DaemonLink::Numbered DaemonLink::number(Completion& done) const {
    return std::make_shared<DaemonNumberedRequest>(completions_, done);
}

ServiceConnection::ReplyHandler DaemonLink::handlerFor(const Numbered& request) const {
    return [request, completions = completions_](ServiceReply reply) {
        if (completions->isEnding()) return;  // left to finishAll(), which calls it on its thread
        request->finish(replyOf(std::move(reply), false));
    };
}

// If memory is short, destroying the request finishes it, at the latest when this function returns.
void DaemonLink::request(IPCMessage message, Completion done, Wish wish) {
    if (!isInHomeProcess()) return done(daemonFailure(Kind::Ending));
    Numbered request;
    try {
        request = number(done);
    } catch (const std::bad_alloc&) {
        remember(wish);
        return done(daemonFailure(Kind::OutOfMemory));
    }
    try {
        const auto handler = handlerFor(request);
        const bool isPosted = post(wish, [&](ServiceConnection& connection) {
            connection.sendMessageWithReply(std::move(message), *xpcConnectionQueue_, handler);
        });
        if (isPosted) return;
        if (hasEnded()) return request->finish(daemonFailure(Kind::Ending));
        queueHandle_.async([request] { request->finish(daemonFailure(Kind::BusGone)); });
    } catch (const std::bad_alloc&) {
        remember(wish);
    }
}

// After the wait the link may be gone.
void DaemonLink::send(IPCMessage message, const SerialQueue& replies,
                      ServiceConnection::ReplyHandler handler) {
    if (!isInHomeProcess()) return;
    const auto queue = replies.handle();
    std::optional<ServiceConnection::Request> request;
    post(std::nullopt, [&](ServiceConnection& connection) {
        request.emplace(connection.request(std::move(message)));
    });
    if (!request) return;
    request->wait();
    auto reply = request->takeReply();
    if (!reply) return;
    queue.runOrAsync([handler = std::move(handler), reply = *std::move(reply)]() mutable {
        handler(std::move(reply));
    });
}

// --- Events ---

void DaemonLink::receive(const ServiceEvent& event) {
    try {
        if (!receiver_) return handle(event);
        if (state() == DaemonState::Connecting) receiver_(event);
    } catch (const std::bad_alloc&) {
        // Memory does not hold the event: it is dropped.
    }
}

void DaemonLink::handle(const ServiceEvent& event) {
    if (const auto* message = std::get_if<IPCMessage>(&event)) {
        const auto change = stationChangeIn(*message);
        const auto told = events();
        if (change && told && told->station) told->station(*change);
    } else if (std::holds_alternative<ServiceAppeared>(event)) {
        appeared();
    } else if (std::get<ServiceError>(event).kind == ServiceError::Kind::Interrupted) {
        lostDaemon();
    } else {
        lostBus();
    }
}

void DaemonLink::appeared() {
    const bool isNew = enter(DaemonState::Connected);
    const bool hasRoom = renew();
    if (isNew) tell(DaemonState::Connected);
    if (!hasRoom) tellRenewal(Unexpected(DaemonError{Kind::OutOfMemory}));
}

void DaemonLink::lostDaemon() {
    if (enter(DaemonState::DaemonGone)) tell(DaemonState::DaemonGone);
}

// Handles the last event of a connection, which may be destroyed from its own handler.
void DaemonLink::lostBus() {
    const bool isNew = enter(DaemonState::BusGone);
    {
        std::unique_ptr<ServiceConnection> lost;
        const std::lock_guard lock(mutex_);
        if (state_ == DaemonState::Ending) return;
        lost = std::move(xpcConnection_);
        completions_->noteLoss();
        retry_->schedule(backOff_.next());
    }
    if (isNew) tell(DaemonState::BusGone);
}

// Asks the daemon again for notifications, if it went away while they were wanted. Returns false if
// memory is too short for that.
bool DaemonLink::renew() {
    {
        const std::lock_guard lock(mutex_);
        if (!isRenewalDue()) return true;
    }
    Numbered request;
    try {
        auto [message, read] = requests::subscribe(true);
        Completion done = [weak = weak_from_this(), read = read](DaemonReply reply) {
            if (const auto self = weak.lock()) self->tellRenewal(std::move(reply).and_then(read));
        };
        request = number(done);
        const auto handler = handlerFor(request);
        const std::lock_guard lock(mutex_);
        if (!isRenewalDue()) {
            request->forget();
            return true;
        }
        xpcConnection_->sendMessageWithReply(std::move(message), *xpcConnectionQueue_, handler);
        isSubscriptionLost_ = false;
        return true;
    } catch (const std::bad_alloc&) {
        if (request) request->forget();
        return false;
    }
}

// REQUIRES: the mutex is held.
bool DaemonLink::isRenewalDue() const {
    return state_ == DaemonState::Connected && isSubscribed_ && isSubscriptionLost_;
}

// Returns whether the state has changed.
bool DaemonLink::enter(DaemonState state) {
    const std::lock_guard lock(mutex_);
    if (state_ == DaemonState::Ending) return false;
    if (state == DaemonState::Connected || state == DaemonState::DaemonGone) backOff_.reset();
    const bool isLoss = state == DaemonState::DaemonGone || state == DaemonState::BusGone;
    if (isLoss) isSubscriptionLost_ = true;
    return std::exchange(state_, state) != state;
}

std::shared_ptr<const DaemonEvents> DaemonLink::events() const {
    const std::lock_guard lock(mutex_);
    return events_;
}

void DaemonLink::tell(DaemonState state) {
    const auto told = events();
    if (told && told->state) told->state(state);
}

void DaemonLink::tellRenewal(const DaemonResult<void>& result) {
    const auto told = events();
    if (told && told->renewal) told->renewal(result);
}

}  // namespace halvane
