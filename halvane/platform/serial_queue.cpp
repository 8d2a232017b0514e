#include "halvane/platform/serial_queue.h"

#include <deque>
#include <mutex>
#include <thread>
#include <utility>

#include "halvane/platform/counting_semaphore.h"
#include "halvane/platform/process_internal.h"
#include "halvane/platform/thread_internal.h"

namespace halvane {

// Shared with the thread, which outlives a queue that is destroyed from it, and with handles.
class HALVANE_HIDDEN SerialQueue::State {
  public:
    explicit State(std::string label) : label_(std::move(label)) {}

    const std::string& label() const { return label_; }
    bool isInHomeProcess() const { return home_.isCurrent(); }
    bool isCurrent() const { return thread_.get_id() == std::this_thread::get_id(); }

    static void start(const std::shared_ptr<State>& state) {
        state->thread_ = startThread(state->label_, [state] { state->run(); });
    }

    void async(Work work) {
        if (!work || !isInHomeProcess()) return;
        {
            const std::lock_guard lock(mutex_);
            if (isClosed_) return;  // the work dies with the call, when the lock is released
            waiting_.push_back(std::move(work));
            if (!std::exchange(isIdle_, false)) return;
        }
        changed_.signal();
    }

    // Once. It takes no memory, for a destructor calls it.
    void close() {
        {
            const std::lock_guard lock(mutex_);
            isClosed_ = true;
            dropped_.swap(waiting_);
        }
        changed_.signal();
        if (isCurrent()) {
            thread_.detach();
        } else {
            thread_.join();
        }
        dropped_.clear();  // last: that may call anything
    }

  private:
    void run() {
        while (Work work = next()) work();
    }

    // Waits for work; none once the queue is closed.
    Work next() {
        for (;;) {
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
    }

    const std::string label_;
    const HomeProcess home_;
    std::thread thread_;
    std::mutex mutex_;
    CountingSemaphore changed_{0};
    std::deque<Work> waiting_;
    std::deque<Work> dropped_;
    bool isIdle_ = false;  // the thread waits, or is about to, and was not yet woken
    bool isClosed_ = false;
};

SerialQueue::Handle::Handle(std::shared_ptr<State> state) : state_(std::move(state)) {}

// The work may run, and destroy the queue and the handle with it, before the call has returned.
void SerialQueue::Handle::async(Work work) const {
    const auto state = state_;
    state->async(std::move(work));
}

SerialQueue::SerialQueue(std::string label) : state_(std::make_shared<State>(std::move(label))) {
    State::start(state_);
}

// In another process the thread is not there to be waited for, and the state may be locked for
// good. It stays, for what the thread has of it is never given back.
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
