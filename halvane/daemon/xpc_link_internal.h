// The client's end of the connection: its queues, and how a request waits for its reply.
//
// One semaphore is shared by all requests, so callers take turns. It counts one signal for each
// request whatever becomes of its reply, so that nobody waits for good where there is no reply, and
// every later request finds the count at 0. What a waiting thread needs is shared with the reply's
// handler and not part of the link: a thread that the link's end, or a reply to another, released
// finds it in order.
#ifndef HALVANE_DAEMON_XPC_LINK_INTERNAL_H
#define HALVANE_DAEMON_XPC_LINK_INTERNAL_H

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <type_traits>
#include <utility>

#include "halvane/model/daemon_service.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/bus/service_connection.h"
#include "halvane/platform/bus/service_event.h"
#include "halvane/platform/os/counting_semaphore.h"
#include "halvane/platform/os/process_internal.h"
#include "halvane/platform/os/serial_queue.h"

namespace halvane {

// What a request comes to: a failure, until a reply says otherwise.
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
    std::mutex mutex_;  // for requests at once, the one case of both calls at once
    Result result_;
};

inline constexpr const char* kXPCConnectionQueueLabel =
    HALVANE_DAEMON_SERVICE_NAME ".connection.queue";
inline constexpr const char* kXPCReplyQueueLabel = HALVANE_DAEMON_SERVICE_NAME ".reply.queue";

class XPCLink {
  public:
    using EventHandler = std::function<void(const ServiceEvent&)>;

    // A link whose events go to `handler`, on the connection queue; none before resume().
    explicit XPCLink(EventHandler handler);

    XPCLink(const XPCLink&) = delete;
    XPCLink& operator=(const XPCLink&) = delete;

    ~XPCLink();

    void resume();

    // Ends the connection, and waits until the handler has returned, unless called from it: it is
    // not called again. A reply that the handler waits for becomes an error.
    void end();

    bool hasEnded() const { return hasEnded_; }
    bool isInHomeProcess() const { return home_.isCurrent(); }

    // Sends `message`, and answers what `parse` makes of its reply. The reply is parsed on the
    // reply queue, a small one without waking the queue's thread. std::bad_alloc while it is parsed
    // makes it an error. In a child that fork() made of the link's process nothing is sent, and the
    // answer is what `parse` makes of an error.
    // REQUIRES: `parse` waits for nothing.
    template <typename Parse>
    auto request(IPCMessage&& message, Parse parse) {
        using Result = std::invoke_result_t<Parse, const ServiceReply&>;
        const auto outcome = std::make_shared<XPCOutcome<Result>>(parse(ServiceError{}));
        sendAndWait(std::move(message),
                    [outcome, parse = std::move(parse)](const ServiceReply& reply) {
                        outcome->set(parse(reply));
                    });
        return outcome->take();
    }

    // Ends the connection, for good: no event is told any more, and requests that wait for their
    // reply, and later ones, fail. Replies that came before are still handled.
    void releaseConnection();

  private:
    using ReplyHandler = std::function<void(const ServiceReply&)>;
    class PendingReply;

    void sendAndWait(IPCMessage message, ReplyHandler handler);

    const HomeProcess home_;
    std::atomic<bool> isReleased_ = false;
    std::atomic<bool> hasEnded_ = false;
    std::optional<SerialQueue> xpcConnectionQueue_;  // until the end
    const std::unique_ptr<ServiceConnection> xpcConnection_;
    SerialQueue xpcReplyQueue_;
    const std::shared_ptr<CountingSemaphore> xpcCommandSemaphore_;
};

}  // namespace halvane

#endif
