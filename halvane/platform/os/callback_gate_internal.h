// Lets callbacks run until the gate is closed for good. A caller checks the gate before each
// callback; once the gate is closed, no callback runs any more.
//
// Threads: any thread may make any call.
#ifndef HALVANE_PLATFORM_OS_CALLBACK_GATE_INTERNAL_H
#define HALVANE_PLATFORM_OS_CALLBACK_GATE_INTERNAL_H

#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

namespace halvane {

class CallbackGate {
  public:
    // One callback on the calling thread, if the gate is open.
    class Pass {
      public:
        explicit Pass(CallbackGate& gate) : gate_(gate), isGranted_(gate.enter(*this)) {}
        Pass(const Pass&) = delete;
        Pass& operator=(const Pass&) = delete;
        ~Pass() {
            if (isGranted_) gate_.leave(*this);
        }
        explicit operator bool() const { return isGranted_; }

      private:
        friend class CallbackGate;
        CallbackGate& gate_;
        const std::thread::id thread_ = std::this_thread::get_id();
        Pass* next_ = nullptr;  // the next callback inside the gate
        const bool isGranted_;
    };

    bool isClosed() const {
        const std::lock_guard lock(mutex_);
        return isClosed_;
    }

    // Closes the gate and waits for all callbacks inside, except those of the calling thread.
    void close() {
        std::unique_lock lock(mutex_);
        isClosed_ = true;
        left_.wait(lock, [this] { return !isAnotherInside(); });
    }

  private:
    bool enter(Pass& pass) {
        const std::lock_guard lock(mutex_);
        if (!isClosed_) pass.next_ = std::exchange(first_, &pass);
        return !isClosed_;
    }

    // Notifies under the lock: after it, the closing thread may have destroyed the gate.
    void leave(const Pass& pass) {
        const std::lock_guard lock(mutex_);
        Pass** link = &first_;
        while (*link != &pass) link = &(*link)->next_;
        *link = pass.next_;
        if (isClosed_) left_.notify_all();
    }

    bool isAnotherInside() const {
        const Pass* pass = first_;
        while (pass != nullptr && pass->thread_ == std::this_thread::get_id()) pass = pass->next_;
        return pass != nullptr;
    }

    mutable std::mutex mutex_;
    std::condition_variable left_;
    Pass* first_ = nullptr;  // the callbacks inside: a list that allocates nothing
    bool isClosed_ = false;
};

}  // namespace halvane

#endif
