#include "halvane/platform/os/serial_queue.h"

#include <atomic>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

#include "halvane/platform/os/counting_semaphore.h"
#include "halvane/platform/os/process_internal.h"
#include "halvane/platform/os/thread_internal.h"

namespace halvane {

// Shared with handles and with the thread, which outlives a queue that its own work destroys.
class HALVANE_HIDDEN SerialQueue::State {
  public:
    explicit State(std::string label) : label_(std::move(label)) {}

    const std::string& label() const { return label_; }
    bool isInHomeProcess() const { return home_.isCurrent(); }
    bool isCurrent() const { return isInHomeProcess() && (isOn(thread_.get_id()) || isOn(guest_)); }

    static void start(const std::shared_ptr<State>& state) {
        state->thread_ = startThread(state->label_, [state] { state->run(); });
    }

    void async(Work work) {
        if (!work || !isInHomeProcess()) return;
        {
            const std::lock_guard lock(mutex_);
            if (isClosed_) return;  // the caller destroys the work after the lock is released
            waiting_.push_back(std::move(work));
            if (!std::exchange(isIdle_, false)) return;
        }
        changed_.signal();
    }

    void append(Work work) {
        if (!work || !isInHomeProcess()) return;
        const std::lock_guard lock(mutex_);
        if (!isClosed_) waiting_.push_back(std::move(work));
    }

    void wake() {
        if (!isInHomeProcess()) return;
        {
            const std::lock_guard lock(mutex_);
            if (isClosed_ || waiting_.empty() || !std::exchange(isIdle_, false)) return;
        }
        changed_.signal();
    }

    void runOrAsync(Work work) {
        if (!work || !isInHomeProcess() || !enter(work)) return;
        runAsGuest(work);
        leave();
    }

    // Called once. It allocates nothing, since a destructor calls it.
    void close() {
        bool isForeignGuestIn = false;
        {
            const std::lock_guard lock(mutex_);
            isClosed_ = true;
            isForeignGuestIn = guest_ != std::thread::id() && !isOn(guest_);
            dropped_.swap(waiting_);
        }
        changed_.signal();
        if (isForeignGuestIn) guestLeft_.wait();
        if (isOn(thread_.get_id())) {
            thread_.detach();
        } else {
            thread_.join();
        }
        dropped_.clear();  // last, since destroying work may call anything
    }

  private:
    static bool isOn(std::thread::id thread) { return thread == std::this_thread::get_id(); }

    // Takes the thread's place; the thread stays idle until leave(). If the queue is busy or has
    // work that waits, the work is queued. If the queue is closed, the work stays with the caller.
    bool enter(Work& work) {
        {
            const std::lock_guard lock(mutex_);
            if (isClosed_) return false;
            const bool isIdle = std::exchange(isIdle_, false);
            if (isIdle && waiting_.empty()) {
                guest_ = std::this_thread::get_id();
                return true;
            }
            waiting_.push_back(std::move(work));
            if (!isIdle) return false;
        }
        changed_.signal();
        return false;
    }

    static void runAsGuest(Work& work) noexcept {
        work();
        work = nullptr;
    }

    // Leaves newer work to the thread. A child process that the work has forked has no such thread.
    void leave() {
        if (!isInHomeProcess()) return;
        CountingSemaphore* next = nullptr;
        {
            const std::lock_guard lock(mutex_);
            guest_ = std::thread::id();
            isIdle_ = waiting_.empty();
            if (!isIdle_) next = &changed_;
            if (isClosed_) next = &guestLeft_;
        }
        if (next != nullptr) next->signal();
    }

    void run() {
        while (Work work = next()) work();
    }

    // Waits for work. Returns none once the queue is closed, or in a child that the last work
    // forked.
    Work next() {
        while (isInHomeProcess()) {
            {
                const std::lock_guard lock(mutex_);
                if (isClosed_) return nullptr;
                if (!waiting_.empty()) {
                    Work work = std::move(waiting_.front());
                    waiting_.pop_front();
                    return work;
                }
                isIdle_ = true;
            }
            changed_.wait();
        }
        return nullptr;
    }

    const std::string label_;
    const HomeProcess home_;
    std::thread thread_;
    std::mutex mutex_;
    std::atomic<std::thread::id> guest_{};  // the thread that runs work in the queue thread's place
    CountingSemaphore changed_{0};
    CountingSemaphore guestLeft_{0};  // used once the queue is closed
    std::deque<Work> waiting_;
    std::deque<Work> dropped_;
    // The thread waits or is about to, nobody has woken it, and nobody is in its place.
    bool isIdle_ = false;
    bool isClosed_ = false;
};

SerialQueue::Handle::Handle(std::shared_ptr<State> state) : state_(std::move(state)) {}

// The work may run before the call returns, and destroy the queue and the handle.
void SerialQueue::Handle::async(Work work) const {
    const auto state = state_;
    state->async(std::move(work));
}

void SerialQueue::Handle::runOrAsync(Work work) const {
    const auto state = state_;
    state->runOrAsync(std::move(work));
}

void SerialQueue::Handle::append(Work work) const {
    state_->append(std::move(work));
}

void SerialQueue::Handle::wake() const {
    state_->wake();
}

SerialQueue::SerialQueue(std::string label) : state_(std::make_shared<State>(std::move(label))) {
    State::start(state_);
}

// In another process there is no thread to wait for, and the state may be locked forever. The state
// is never freed, since the thread's reference to it is never released.
SerialQueue::~SerialQueue() {
    if (state_->isInHomeProcess()) state_->close();
}

void SerialQueue::async(Work work) {
    handle().async(std::move(work));
}

bool SerialQueue::isCurrent() const {
    return state_->isCurrent();
}

const std::string& SerialQueue::label() const {
    return state_->label();
}

SerialQueue::Handle SerialQueue::handle() const {
    return Handle(state_);
}

}  // namespace halvane
