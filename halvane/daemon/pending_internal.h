// Requests whose replies are passed to functions, and what becomes of a request without a reply.
//
// Threads: any thread may make any call.
#ifndef HALVANE_DAEMON_PENDING_INTERNAL_H
#define HALVANE_DAEMON_PENDING_INTERNAL_H

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <utility>

#include "halvane/base/result.h"
#include "halvane/daemon/daemon_result.h"
#include "halvane/platform/bus/ipc_message.h"

namespace halvane {

using DaemonReply = DaemonResult<IPCMessage>;

inline DaemonReply daemonFailure(DaemonError::Kind kind) {
    return Unexpected(DaemonError{kind});
}

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
