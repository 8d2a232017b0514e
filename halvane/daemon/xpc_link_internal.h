// What is particular to the link of HalvaneXPCClient: requests share one semaphore, and their
// replies become results on a queue of their own.
//
// Callers take turns, since all requests share the semaphore. It counts one signal per request,
// even if no reply comes. Therefore no caller waits forever for a lost reply, and every later
// request finds the count at 0. The reply handler shares what a waiting thread needs, and the link
// does not own it: a thread that is released by the link's end or by another reply can still use
// it.
#ifndef HALVANE_DAEMON_XPC_LINK_INTERNAL_H
#define HALVANE_DAEMON_XPC_LINK_INTERNAL_H

#include <functional>
#include <memory>
#include <mutex>
#include <type_traits>
#include <utility>

#include "halvane/base/result.h"
#include "halvane/daemon/link_internal.h"
#include "halvane/model/daemon_service.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/bus/service_event.h"
#include "halvane/platform/os/counting_semaphore.h"
#include "halvane/platform/os/serial_queue.h"

namespace halvane {

// The outcome of a request: a failure until a reply says otherwise.
template <typename Result>
class XPCOutcome {
  public:
    explicit XPCOutcome(Result failure) : result_(std::move(failure)) {}

    void set(Result result) {
        const std::lock_guard lock(mutex_);
        result_ = std::move(result);
    }
    Result take() {
        const std::lock_guard lock(mutex_);
        return std::move(result_);
    }

  private:
    std::mutex mutex_;  // for concurrent requests, which alone may make both calls at once
    Result result_;
};

inline constexpr const char* kXPCConnectionQueueLabel =
    HALVANE_DAEMON_SERVICE_NAME ".connection.queue";
inline constexpr const char* kXPCReplyQueueLabel = HALVANE_DAEMON_SERVICE_NAME ".reply.queue";

class XPCLink {
  public:
    // Creates a link that passes events to `handler` on the connection queue. No event comes before
    // resume().
    explicit XPCLink(DaemonLink::Receiver handler)
        : link_(std::make_shared<DaemonLink>(kXPCConnectionQueueLabel, std::move(handler))) {}

    XPCLink(const XPCLink&) = delete;
    XPCLink& operator=(const XPCLink&) = delete;

    // As for DaemonLink: connect(), end() and release().
    void resume() { link_->connect(); }
    void end() { link_->end(); }
    void releaseConnection() { link_->release(); }

    bool hasEnded() const { return link_->hasEnded(); }
    bool isInHomeProcess() const { return link_->isInHomeProcess(); }

    // Sends `message` and returns what `parse` makes of its reply. The reply is parsed on the reply
    // queue; if that is idle, on the calling thread in the place of the queue's. If parsing throws
    // std::bad_alloc, the reply counts as an error. In a child process made by fork() nothing is
    // sent, and the result is what `parse` makes of an error.
    // REQUIRES: `parse` waits for nothing.
    template <typename Parse>
    auto request(IPCMessage&& message, Parse parse) {
        using Result = std::invoke_result_t<Parse, const ServiceReply&>;
        const auto outcome =
            std::make_shared<XPCOutcome<Result>>(parse(Unexpected(ServiceError{})));
        sendAndWait(std::move(message),
                    [outcome, parse = std::move(parse)](const ServiceReply& reply) {
                        outcome->set(parse(reply));
                    });
        return outcome->take();
    }

  private:
    using ReplyHandler = std::function<void(const ServiceReply&)>;

    void sendAndWait(IPCMessage message, ReplyHandler handler);

    const std::shared_ptr<DaemonLink> link_;
    SerialQueue xpcReplyQueue_{kXPCReplyQueueLabel};
    const std::shared_ptr<CountingSemaphore> xpcCommandSemaphore_ =
        std::make_shared<CountingSemaphore>(0);
};

}  // namespace halvane

#endif
