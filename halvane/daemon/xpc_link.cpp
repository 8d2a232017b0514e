#include <new>
#include <utility>

#include "halvane/daemon/xpc_link_internal.h"
#include "halvane/platform/bus/service_event.h"

namespace halvane {

// Releases the waiting thread once: when the reply was handled, or when it can no longer be handled
// because nobody holds this object.
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
            // Memory does not hold the result: the request stays failed.
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
    : xpcConnectionQueue_(std::in_place, kXPCConnectionQueueLabel),
      xpcConnection_(ServiceConnection::create(kDaemonServiceName, *xpcConnectionQueue_)),
      xpcReplyQueue_(kXPCReplyQueueLabel),
      xpcCommandSemaphore_(std::make_shared<CountingSemaphore>(0)) {
    xpcConnection_->setPrivileged(true);
    xpcConnection_->setEventHandler(
        [this, handler = std::move(handler)](const ServiceEvent& event) {
            if (isReleased_) return;
            try {
                handler(event);
            } catch (const std::bad_alloc&) {
                // Memory does not hold the event: it is dropped.
            }
        });
}

XPCLink::~XPCLink() = default;

void XPCLink::resume() {
    xpcConnection_->resume();
}

// The connection queue ends before the other members, which its handlers may use. The connection is
// released before its queue, so that a handler that waits for a reply gets one.
void XPCLink::end() {
    if (!isInHomeProcess()) return;
    hasEnded_ = true;
    releaseConnection();
    xpcConnectionQueue_.reset();
}

// The released connection is destroyed with the link. Destroying it now would drop replies that
// have arrived but were not yet handled. Nobody handles the event that cancelling causes.
void XPCLink::releaseConnection() {
    isReleased_ = true;
    xpcConnection_->cancel();
}

void XPCLink::sendAndWait(IPCMessage message, ReplyHandler handler) {
    if (!isInHomeProcess()) return;
    const auto semaphore = xpcCommandSemaphore_;
    auto pending = std::make_shared<PendingReply>(std::move(handler), semaphore);
    try {
        xpcConnection_->sendMessageWithReply(
            std::move(message), xpcReplyQueue_,
            [pending = std::move(pending)](const ServiceReply& reply) { pending->handle(reply); },
            ServiceConnection::ReplyThread::Any);
    } catch (const std::bad_alloc&) {
        // Whether or not the request was sent, the caller waits for its reply until the handler is
        // gone.
    }
    semaphore->wait();
}

}  // namespace halvane
