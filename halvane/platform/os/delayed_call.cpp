#include <utility>

#include "halvane/platform/os/delayed_call_internal.h"
#include "halvane/platform/os/thread_internal.h"

namespace halvane {

DelayedCall::DelayedCall(std::string_view label, std::function<void()> call)
    : call_(std::move(call)), thread_(startThread(label, [this] { run(); })) {}

DelayedCall::~DelayedCall() {
    stop();
}

void DelayedCall::schedule(std::chrono::steady_clock::duration delay) {
    const std::lock_guard lock(mutex_);
    due_ = std::chrono::steady_clock::now() + delay;
    changed_.notify_one();
}

void DelayedCall::stop() {
    {
        const std::lock_guard lock(mutex_);
        isStopped_ = true;
        changed_.notify_one();
    }
    if (thread_.joinable()) thread_.join();
}

void DelayedCall::run() {
    std::unique_lock lock(mutex_);
    while (!isStopped_) {
        if (!due_) {
            changed_.wait(lock);
        } else if (std::chrono::steady_clock::now() < *due_) {
            const auto due = *due_;  // may be replaced meanwhile
            changed_.wait_until(lock, due);
        } else {
            due_.reset();
            lock.unlock();
            call_();
            lock.lock();
        }
    }
}

}  // namespace halvane
