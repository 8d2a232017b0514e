// Requests that await their reply: either a thread blocks, or a function is called.
//
// Threads: any thread may make any call.
#ifndef HALVANE_DAEMON_PENDING_INTERNAL_H
#define HALVANE_DAEMON_PENDING_INTERNAL_H

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

#include "halvane/base/result.h"
#include "halvane/daemon/daemon_result.h"
#include "halvane/platform/bus/ipc_message.h"

namespace halvane {

using DaemonReply = DaemonResult<IPCMessage>;

inline DaemonReply daemonFailure(DaemonError::Kind kind) {
    return Unexpected(DaemonError{kind});
}

// A blocked thread waits here. It shares this with the sender of the reply, who may come too late.
class DaemonWaiter {
  public:
    // Only the first reply counts.
    void set(DaemonReply reply) {
        const std::lock_guard lock(mutex_);
        if (!reply_) reply_.emplace(std::move(reply));
        changed_.notify_one();
    }

    // REQUIRES: called once.
    DaemonReply wait(const DaemonDeadline& deadline) {
        std::unique_lock lock(mutex_);
        const auto isThere = [this] { return reply_.has_value(); };
        if (!deadline.end()) {
            changed_.wait(lock, isThere);
        } else if (!changed_.wait_until(lock, *deadline.end(), isThere)) {
            return daemonFailure(DaemonError::Kind::DeadlinePassed);
        }
        return std::move(*reply_);
    }

  private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::optional<DaemonReply> reply_;
};

// The functions that await a reply, by request number.
class DaemonCompletions {
  public:
    using Completion = DaemonCompletion<IPCMessage>;
    using Number = std::uint64_t;

    // Throws std::bad_alloc, and leaves the function with the caller then.
    Number add(Completion& completion) {
        const std::lock_guard lock(mutex_);
        waiting_.emplace(++last_, std::move(completion));
        return last_;
    }

    // Calls the function on the calling thread. Does nothing if it was already taken.
    void finish(Number number, DaemonReply reply) {
        if (auto completion = take(number)) completion(std::move(reply));
    }

    // Removes the function and returns it; empty if it was already taken.
    Completion take(Number number) {
        const std::lock_guard lock(mutex_);
        auto node = waiting_.extract(number);
        return node ? std::move(node.mapped()) : Completion();
    }

    // From now on finishAll() completes the requests whose replies are lost.
    void beginEnd() { isEnding_ = true; }
    bool isEnding() const { return isEnding_; }

    // Called before a connection that the bus has left is destroyed, with the requests that came
    // too late for it.
    void noteLoss() { ++losses_; }
    unsigned losses() const { return losses_; }

    // Why a request gets no reply. `losses` is the number of losses when it began.
    DaemonReply lostReply(unsigned losses) const {
        if (isEnding_) return daemonFailure(DaemonError::Kind::Ending);
        return daemonFailure(losses_ != losses ? DaemonError::Kind::BusGone
                                               : DaemonError::Kind::OutOfMemory);
    }

    // Calls all remaining functions in the order of their requests.
    void finishAll() {
        while (auto completion = takeFirst()) completion(daemonFailure(DaemonError::Kind::Ending));
    }

  private:
    Completion takeFirst() {
        const std::lock_guard lock(mutex_);
        if (waiting_.empty()) return nullptr;
        return std::move(waiting_.extract(waiting_.begin()).mapped());
    }

    std::atomic<bool> isEnding_ = false;
    std::atomic<unsigned> losses_ = 0;
    std::mutex mutex_;
    std::map<Number, Completion> waiting_;
    Number last_ = 0;
};

// The connection's share of a request, held by the copies of the reply handler. The connection
// destroys it without a reply if memory cannot hold the reply, and when the connection ends.
class DaemonBlockedRequest {
  public:
    DaemonBlockedRequest(std::shared_ptr<DaemonWaiter> waiter,
                         std::shared_ptr<const DaemonCompletions> others)
        : waiter_(std::move(waiter)), others_(std::move(others)), losses_(others_->losses()) {}
    DaemonBlockedRequest(const DaemonBlockedRequest&) = delete;
    DaemonBlockedRequest& operator=(const DaemonBlockedRequest&) = delete;
    ~DaemonBlockedRequest() { waiter_->set(others_->lostReply(losses_)); }

    void finish(DaemonReply reply) { waiter_->set(std::move(reply)); }

  private:
    const std::shared_ptr<DaemonWaiter> waiter_;
    const std::shared_ptr<const DaemonCompletions> others_;
    const unsigned losses_;
};

// The same for a function to call.
class DaemonNumberedRequest {
  public:
    // Throws std::bad_alloc, and has not taken the function then.
    DaemonNumberedRequest(std::shared_ptr<DaemonCompletions> completions,
                          DaemonCompletions::Completion& completion)
        : completions_(std::move(completions)),
          losses_(completions_->losses()),
          number_(completions_->add(completion)) {}
    DaemonNumberedRequest(const DaemonNumberedRequest&) = delete;
    DaemonNumberedRequest& operator=(const DaemonNumberedRequest&) = delete;
    ~DaemonNumberedRequest() {
        if (completions_->isEnding()) return;
        completions_->finish(number_, completions_->lostReply(losses_));
    }

    void finish(DaemonReply reply) { completions_->finish(number_, std::move(reply)); }

    // Drops the function without calling it.
    void forget() { completions_->take(number_); }

  private:
    const std::shared_ptr<DaemonCompletions> completions_;
    const unsigned losses_;
    const DaemonCompletions::Number number_;
};

}  // namespace halvane

#endif
