// A serial queue: runs work items one at a time, in order of arrival, on a thread of its own or on
// a thread that takes its place.
//
// The queue's thread receives no signals. Its name is the last 15 bytes of the label.
//
// A child process made by fork() has no such thread. There nothing runs on the queue, new work is
// destroyed at once, and destroying the queue waits for nothing and leaves its memory allocated.
//
// Threads: any thread may make any call. As with every object, no call may overlap the destruction
// of the queue; a caller that cannot be sure of that uses a Handle.
#ifndef HALVANE_PLATFORM_OS_SERIAL_QUEUE_H
#define HALVANE_PLATFORM_OS_SERIAL_QUEUE_H

#include <functional>
#include <memory>
#include <string>

#include "halvane/base/cxx20.h"
#include "halvane/base/export.h"

namespace halvane {

class HALVANE_EXPORT SerialQueue {
  private:
    class State;

  public:
    // REQUIRES: throws nothing; an exception ends the program, as it does on any thread.
    using Work = std::function<void()>;

    // A reference to the queue that may outlive it. Copies refer to the same queue.
    class HALVANE_EXPORT Handle {
      public:
        // Like SerialQueue::async(). Once the queue is destroyed, `work` is destroyed on the
        // calling thread without having run.
        void async(Work work) const;

        // The same, but if the queue is idle, `work` runs on the calling thread before the call
        // returns, which saves waking the queue's thread. The calling thread acts as the queue's
        // thread meanwhile, except for its name and its signals.
        // REQUIRES: `work` does not wait for anything that the calling thread has yet to do.
        void runOrAsync(Work work) const;

        // Like async(), but an idle queue sleeps on until wake(), or until the next work that comes
        // by another call. For work that arrives in bursts: its thread is woken once for all.
        void append(Work work) const;
        void wake() const;

      private:
        friend class SerialQueue;
        explicit Handle(std::shared_ptr<State> state);
        std::shared_ptr<State> state_;
    };

    // Throws std::bad_alloc also if the system has no room for another thread.
    explicit SerialQueue(std::string label);

    SerialQueue(const SerialQueue&) = delete;
    SerialQueue& operator=(const SerialQueue&) = delete;

    // Waits for running work and destroys the rest: nothing runs on the queue afterwards. On the
    // queue's own thread it does not wait; the work that destroys the queue is the last to run.
    // REQUIRES: running work does not wait for the destroying thread.
    ~SerialQueue();

    // Runs `work` after all earlier work, and returns at once. `work` is destroyed on the queue's
    // thread right after it has run. It may destroy the queue. Empty work is ignored.
    void async(Work work);

    // Whether the calling thread is the queue's thread, or runs work in its place.
    bool isCurrent() const;

    // The text given to the constructor.
    const std::string& label() const;

    // A reference to the queue.
    Handle handle() const;

  private:
    std::shared_ptr<State> state_;
};

}  // namespace halvane

#endif
