// The reply that a blocked thread awaits. The thread shares it with whoever passes the reply on,
// who may come too late.
//
// Threads: any thread may make any call, except as stated.
#ifndef HALVANE_PLATFORM_BUS_AWAITED_REPLY_INTERNAL_H
#define HALVANE_PLATFORM_BUS_AWAITED_REPLY_INTERNAL_H

#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

#include "halvane/platform/bus/service_event.h"
#include "halvane/platform/os/wait_for_input_internal.h"

namespace halvane {

class AwaitedReply {
  public:
    AwaitedReply() = default;
    AwaitedReply(const AwaitedReply&) = delete;
    AwaitedReply& operator=(const AwaitedReply&) = delete;

    // The reply has arrived, or will never arrive. Only the first of these calls counts.
    void set(ServiceReply reply) {
        const std::lock_guard lock(mutex_);
        if (isSettled_) return;
        reply_.emplace(std::move(reply));
        settle();
    }
    void lose() {
        const std::lock_guard lock(mutex_);
        if (!isSettled_) settle();
    }

    bool isSettled() const {
        const std::lock_guard lock(mutex_);
        return isSettled_;
    }

    // Asks the waiting thread to lead (SharedLink). Returns false if it need not wait any more.
    bool appoint() {
        const std::lock_guard lock(mutex_);
        if (isSettled_) return false;
        isAppointed_ = true;
        changed_.notify_one();
        return true;
    }

    // Waits until the reply is settled, the thread is asked to lead, or `end` has come. Returns
    // whether the thread is asked to lead, and forgets that.
    bool await(const WaitEnd& end) {
        std::unique_lock lock(mutex_);
        const auto isOver = [this] { return isSettled_ || isAppointed_; };
        if (end) {
            changed_.wait_until(lock, *end, isOver);
        } else {
            changed_.wait(lock, isOver);
        }
        return std::exchange(isAppointed_, false);
    }

    // The reply; absent if there is none, or it was taken before.
    std::optional<ServiceReply> take() {
        const std::lock_guard lock(mutex_);
        return std::exchange(reply_, std::nullopt);
    }

  private:
    friend class SharedLink;

    void settle() {
        isSettled_ = true;
        changed_.notify_one();
    }

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::optional<ServiceReply> reply_;
    bool isSettled_ = false;
    bool isAppointed_ = false;
    AwaitedReply* next_ = nullptr;  // of those that wait behind a leader; SharedLink guards it
};

// Whoever owes the reply holds this. Destroying it without a reply loses the reply.
class OwedReply {
  public:
    explicit OwedReply(std::shared_ptr<AwaitedReply> reply) : reply_(std::move(reply)) {}
    OwedReply(const OwedReply&) = delete;
    OwedReply& operator=(const OwedReply&) = delete;
    ~OwedReply() { reply_->lose(); }

    void set(ServiceReply reply) { reply_->set(std::move(reply)); }

  private:
    const std::shared_ptr<AwaitedReply> reply_;
};

}  // namespace halvane

#endif
