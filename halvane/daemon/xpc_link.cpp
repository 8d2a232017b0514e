#include <new>
#include <string>

#include "halvane/base/daemon_service.h"
#include "halvane/daemon/xpc_link_internal.h"

namespace halvane {

// Releases the waiting thread once: when the reply was handled, or when it is certain that it never
// will be, since nobody holds this any more.
class XPCLink::PendingReply {
  public:
    PendingReply(ReplyHandler handler, std::shared_ptr<CountingSemaphore> semaphore)
        : handler_(std::move(handler)), semaphore_(std::move(semaphore)) {}

    PendingReply(const PendingReply&) = delete;
    PendingReply& operator=(const PendingReply&) = delete;
    ~PendingReply() { release(); }

    void handle(const ServiceReply& reply) {
        try {
            handler_(reply);
        } catch (const std::bad_alloc&) {
            // No room for the result: the request stays failed.
        }
        release();
    }

  private:
    void release() {
        if (!std::exchange(isReleased_, true)) semaphore_->signal();
    }

    const ReplyHandler handler_;
    const std::shared_ptr<CountingSemaphore> semaphore_;
    bool isReleased_ = false;
};

XPCLink::XPCLink(EventHandler handler)
    : xpcConnectionQueue_(std::in_place, std::string(kDaemonServiceName) + ".connection.queue"),
      xpcConnection_(ServiceConnection::create(kDaemonServiceName, *xpcConnectionQueue_)),
      xpcReplyQueue_(std::string(kDaemonServiceName) + ".reply.queue"),
      xpcCommandSemaphore_(std::make_shared<CountingSemaphore>(0)) {
    xpcConnection_->setPrivileged(true);
    xpcConnection_->setEventHandler(
        [this, handler = std::move(handler)](const ServiceEvent& event) {
            if (!isEnding_) handler(event);
        });
}

XPCLink::~XPCLink() = default;

void XPCLink::resume() {
    if (const auto connection = this->connection()) connection->resume();
}

// Cancelled before its queue goes, so that a handler that waits for a reply gets one; that this
// makes an event of its own is nobody's concern any more.
void XPCLink::end() {
    isEnding_ = true;
    if (const auto connection = this->connection()) connection->cancel();
    xpcConnectionQueue_.reset();
}

std::shared_ptr<ServiceConnection> XPCLink::connection() const {
    const std::lock_guard lock(connectionMutex_);
    return xpcConnection_;
}

void XPCLink::releaseConnection() {
    std::shared_ptr<ServiceConnection> released;  // destroyed last: that may wait
    const std::lock_guard lock(connectionMutex_);
    released.swap(xpcConnection_);
}

void XPCLink::sendAndWait(IPCMessage message, ReplyHandler handler) {
    const auto semaphore = xpcCommandSemaphore_;
    auto pending = std::make_shared<PendingReply>(std::move(handler), semaphore);
    try {
        send(std::move(message), std::move(pending));
    } catch (const std::bad_alloc&) {
        // Not sent, or it was: either way the reply is waited for until its handler is gone.
    }
    semaphore->wait();
}

void XPCLink::send(IPCMessage message, std::shared_ptr<PendingReply> pending) {
    if (const auto connection = this->connection()) {
        connection->sendMessageWithReply(
            std::move(message), xpcReplyQueue_,
            [pending = std::move(pending)](const ServiceReply& reply) { pending->handle(reply); });
    } else {
        xpcReplyQueue_.async([pending = std::move(pending)] {
            pending->handle(ServiceError{ServiceError::Kind::Invalid, "no connection"});
        });
    }
}

}  // namespace halvane
