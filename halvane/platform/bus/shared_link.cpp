#include <chrono>
#include <new>
#include <poll.h>
#include <utility>

#include "halvane/platform/bus/shared_link_internal.h"

namespace halvane {

namespace {

// How many messages are handled before requests are sent.
constexpr int kMessagesAtOnce = 64;

bool hasPassed(const WaitEnd& end) {
    return end && *end <= std::chrono::steady_clock::now();
}

// If memory is short, the request is dropped with its handler.
void send(ServiceLink& link, ServiceRequest& request) {
    try {
        link.send(request.message, std::move(request.answer));
    } catch (const std::bad_alloc&) {
    }
}

}  // namespace

// --- The keeper ---

std::unique_ptr<ServiceLink> SharedLink::keep(std::unique_ptr<ServiceLink> link) {
    {
        const std::lock_guard lock(linkMutex_);
        link_ = std::move(link);
    }
    bool hasInput = true;
    while (attend(hasInput)) {
        sendWaiting();
        if (!hasInput) hasInput = waitAsKeeper();
    }
    withdraw();
    const std::lock_guard lock(linkMutex_);
    return std::move(link_);
}

// Handles what has arrived, unless another thread leads, and sends requests. Returns false at the
// end.
bool SharedLink::attend(bool& hasInput) {
    const std::lock_guard lock(linkMutex_);
    if (!link_->isOpen()) return false;
    if (hasInput) hasInput = !isLed() && link_->process(kMessagesAtOnce);
    if (!sendAll(mailbox_.takeAsReader()) || !link_->isOpen()) return false;
    if (isShared_) {
        publishEvents();
    } else if (link_->isReady()) {
        share();
    }
    return true;
}

bool SharedLink::waitAsKeeper() {
    if (!isShared_) return link_->wait(mailbox_.wake());
    return waitForInput(mask_.descriptor(), POLLIN, mailbox_.wake(), {});
}

// If the system has no room for that, the keeper remains the only one that uses the link.
void SharedLink::share() {
    const std::lock_guard lock(turnMutex_);
    descriptor_ = link_->descriptor();
    events_ = link_->events();
    isShared_ = mask_.watch(descriptor_, events_);
}

// Ends the sharing, and waits until nobody else leads.
void SharedLink::withdraw() {
    std::unique_lock lock(turnMutex_);
    if (!std::exchange(isShared_, false)) return;
    if (leader_ != nullptr) wake_.signal();
    leaderLeft_.wait(lock, [this] { return leader_ == nullptr; });
    mask_.forget();
}

// --- Threads that wait ---

// A waiting thread's place: the leader's, or one behind the leader.
class SharedLink::Place {
  public:
    Place(SharedLink& link, AwaitedReply& reply) : link_(link), reply_(reply) {
        const std::lock_guard lock(link_.turnMutex_);
        isLeader_ = link_.isShared_ && link_.leader_ == nullptr;
        if (isLeader_) {
            link_.leader_ = &reply_;
            link_.mask_.hide();
            return;
        }
        AwaitedReply** last = &link_.first_;
        while (*last != nullptr) last = &(*last)->next_;
        *last = &reply_;
    }
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;
    ~Place() { link_.leave(reply_); }

    bool isLeader() const { return isLeader_; }

  private:
    SharedLink& link_;
    AwaitedReply& reply_;
    bool isLeader_ = false;
};

void SharedLink::wait(AwaitedReply& reply, const WaitEnd& end) {
    if (reply.isSettled()) return;
    const CancellationHeld held;
    const Place place(*this, reply);
    bool isLeader = place.isLeader();
    if (!isLeader) sendWaiting();
    do {
        if (isLeader) lead(reply, end, held);
        const CancellationHeld::Point point(held);
        isLeader = reply.await(end);
    } while (!reply.isSettled() && !hasPassed(end));
}

// Leads until `reply` is settled, `end` has come, or the sharing ends.
void SharedLink::lead(AwaitedReply& reply, const WaitEnd& end, const CancellationHeld& held) {
    Turn turn;
    while (handle(reply, turn)) {
        sendWaiting();
        if (reply.isSettled() || hasPassed(end)) return;
        if (turn.hasInput) continue;
        const CancellationHeld::Point point(held);
        turn.hasInput = waitForInput(descriptor_, turn.events, wake_, end);
    }
    stepDown();
}

// Handles what has arrived, up to the leader's own reply, and sends requests. Returns false if
// there is nothing to lead any more; the keeper then settles the replies.
bool SharedLink::handle(const AwaitedReply& reply, Turn& turn) {
    const std::lock_guard lock(linkMutex_);
    if (!isShared()) return false;
    for (int i = 0; i < kMessagesAtOnce && turn.hasInput && !reply.isSettled(); ++i) {
        turn.hasInput = link_->process(1);
    }
    if (!sendAll(mailbox_.take())) return false;
    publishEvents();
    turn.events = events_;
    return link_->isOpen();
}

void SharedLink::stepDown() {
    const std::lock_guard lock(turnMutex_);
    leader_ = nullptr;
    leaderLeft_.notify_all();
}

void SharedLink::leave(AwaitedReply& reply) {
    const std::lock_guard lock(turnMutex_);
    if (leader_ == &reply) return handOn();
    AwaitedReply** place = &first_;
    while (*place != nullptr && *place != &reply) place = &(*place)->next_;
    if (*place != nullptr) *place = reply.next_;
}

// Appoints the next leader.
// REQUIRES: turnMutex_ is held.
void SharedLink::handOn() {
    leader_ = nullptr;
    if (!isShared_) return leaderLeft_.notify_all();
    while (leader_ == nullptr && first_ != nullptr) {
        AwaitedReply* const next = std::exchange(first_, first_->next_);
        if (next->appoint()) leader_ = next;
    }
    if (leader_ == nullptr) mask_.show(events_);
}

bool SharedLink::isLed() {
    const std::lock_guard lock(turnMutex_);
    return leader_ != nullptr;
}

bool SharedLink::isShared() {
    const std::lock_guard lock(turnMutex_);
    return isShared_;
}

// --- Requests ---

// Returns false if the mailbox is stopped.
// REQUIRES: linkMutex_ is held, as for publishEvents().
bool SharedLink::sendAll(std::optional<std::vector<ServiceRequest>> requests) {
    if (!requests) return false;
    for (auto& request : *requests) send(*link_, request);
    return true;
}

// Sends what is in the mailbox, unless another thread that uses the link is to do so.
void SharedLink::sendWaiting() {
    while (mailbox_.hasRequests()) {
        const std::unique_lock lock(linkMutex_, std::try_to_lock);
        if (!lock) return;
        if (!isShared()) return mailbox_.wakeReader();
        if (!sendAll(mailbox_.take())) return;
        publishEvents();
    }
}

// Tells the leader what to wait for from now on, and the keeper if the link has closed.
void SharedLink::publishEvents() {
    if (!link_->isOpen()) return mailbox_.wake().signal();
    const short events = link_->events();
    if (events == events_) return;
    const std::lock_guard lock(turnMutex_);
    events_ = events;
    if (leader_ != nullptr) {
        wake_.signal();
    } else {
        mask_.show(events_);
    }
}

}  // namespace halvane
