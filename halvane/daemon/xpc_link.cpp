#include <new>
#include <utility>

#include "halvane/daemon/xpc_link_internal.h"

namespace halvane {

namespace {

// Held by a request's reply handler. It releases the waiting thread once: when the reply was
// handled, or when it can no longer be handled because the handler is gone.
class Release {
  public:
    explicit Release(std::shared_ptr<CountingSemaphore> semaphore)
        : semaphore_(std::move(semaphore)) {}
    Release(const Release&) = delete;
    Release& operator=(const Release&) = delete;
    ~Release() { semaphore_->signal(); }

  private:
    const std::shared_ptr<CountingSemaphore> semaphore_;
};

}  // namespace

// Whether or not a request is sent, the caller waits until the handler is gone.
void XPCLink::sendAndWait(IPCMessage message, ReplyHandler handler) {
    const auto semaphore = xpcCommandSemaphore_;
    auto release = std::make_shared<Release>(semaphore);
    try {
        link_->send(std::move(message), xpcReplyQueue_,
                    [handler = std::move(handler),
                     release = std::move(release)](const ServiceReply& reply) {
                        try {
                            handler(reply);
                        } catch (const std::bad_alloc&) {
                            // Memory does not hold the result: the request stays failed.
                        }
                    });
    } catch (const std::bad_alloc&) {
    }
    semaphore->wait();
}

}  // namespace halvane
