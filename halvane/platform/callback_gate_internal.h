// Lets callbacks through until somebody closes it for good: who calls back checks the gate first,
// and who closes it knows that no callback runs any more.
//
// Threads: any call from any thread.
#ifndef HALVANE_PLATFORM_CALLBACK_GATE_INTERNAL_H
#define HALVANE_PLATFORM_CALLBACK_GATE_INTERNAL_H

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace halvane {

class CallbackGate {
  public:
    // Stands for one callback that runs on the thread that makes it, if the gate lets it.
    class Pass {
      public:
        explicit Pass(CallbackGate& gate) : gate_(gate), isGranted_(gate.enter()) {}
        Pass(const Pass&) = delete;
        Pass& operator=(const Pass&) = delete;
        ~Pass() {
            if (isGranted_) gate_.leave();
        }
        explicit operator bool() const { return isGranted_; }

      private:
        CallbackGate& gate_;
        const bool isGranted_;
    };

    bool isClosed() const {
        const std::lock_guard lock(mutex_);
        return isClosed_;
    }

    // Lets nobody in any more, and waits for those that are in, but not for the calling thread.
    void close() {
        std::unique_lock lock(mutex_);
        isClosed_ = true;
        left_.wait(lock, [this] {
            const auto isMe = [me = std::this_thread::get_id()](auto id) { return id == me; };
            return std::ranges::all_of(inside_, isMe);
        });
    }

  private:
    bool enter() {
        const std::lock_guard lock(mutex_);
        if (!isClosed_) inside_.push_back(std::this_thread::get_id());
        return !isClosed_;
    }

    // Notifies under the lock: behind it the one who closes may have destroyed the gate.
    void leave() {
        const std::lock_guard lock(mutex_);
        inside_.erase(std::ranges::find(inside_, std::this_thread::get_id()));
        if (isClosed_) left_.notify_all();
    }

    mutable std::mutex mutex_;
    std::condition_variable left_;
    std::vector<std::thread::id> inside_;
    bool isClosed_ = false;
};

}  // namespace halvane

#endif
