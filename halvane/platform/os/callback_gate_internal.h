// Lets callbacks through until somebody closes it for good: who calls back checks the gate first,
// and who closes it knows that no callback runs any more.
//
// Threads: any call from any thread.
#ifndef HALVANE_PLATFORM_OS_CALLBACK_GATE_INTERNAL_H
#define HALVANE_PLATFORM_OS_CALLBACK_GATE_INTERNAL_H

#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

namespace halvane {

class CallbackGate {
  public:
    // Stands for one callback that runs on the thread that makes it, if the gate lets it.
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
        Pass* next_ = nullptr;  // of those inside
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
        left_.wait(lock, [this] { return !isAnotherInside(); });
    }

  private:
    bool enter(Pass& pass) {
        const std::lock_guard lock(mutex_);
        if (!isClosed_) pass.next_ = std::exchange(first_, &pass);
        return !isClosed_;
    }

    // Notifies under the lock: behind it the one who closes may have destroyed the gate.
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
    Pass* first_ = nullptr;  // those inside: a list that needs no memory
    bool isClosed_ = false;
};

}  // namespace halvane

#endif
