// A serial queue: runs what it is given one after the other, in order of arrival, on one thread of
// its own, or in that one's place.
//
// The thread takes no signals, and bears the end of the label as its name, the last 15 bytes.
//
// A child that fork() makes of the process has no such thread: there nothing runs on the queue,
// work that is given to it is destroyed at once, and destroying the queue waits for nothing and
// leaves its memory behind.
//
// Threads: any call from any thread. As with every object, destroying must not race with another
// call on the same object; a Handle is for who cannot know.
#ifndef HALVANE_PLATFORM_OS_SERIAL_QUEUE_H
#define HALVANE_PLATFORM_OS_SERIAL_QUEUE_H

#include <functional>
#include <memory>
#include <string>

#include "halvane/base/export.h"

namespace halvane {

class HALVANE_EXPORT SerialQueue {
  private:
    class State;

  public:
    // REQUIRES: throws nothing; an exception ends the program, as it does on any thread.
    using Work = std::function<void()>;

    // A way to the queue that may outlive it. Copies lead to the same queue.
    class HALVANE_EXPORT Handle {
      public:
        // As SerialQueue::async(). Once the queue is gone, `work` is destroyed on the calling
        // thread, without having run.
        void async(Work work) const;

        // The same, but where the queue has nothing to do `work` runs before the call returns, on
        // the calling thread, which is the queue's meanwhile, but for its name and its signals:
        // that saves the way to the other.
        // REQUIRES: `work` does not wait for what the calling thread has yet to do.
        void runOrAsync(Work work) const;

      private:
        friend class SerialQueue;
        explicit Handle(std::shared_ptr<State> state);
        std::shared_ptr<State> state_;
    };

    // Throws std::bad_alloc where the system has no room for one more thread, too.
    explicit SerialQueue(std::string label);

    SerialQueue(const SerialQueue&) = delete;
    SerialQueue& operator=(const SerialQueue&) = delete;

    // Waits for the work that is running, and destroys the rest without running it: nothing runs
    // on the queue afterwards. From the queue's own thread it does not wait: the work that
    // destroys the queue is the last to run.
    // REQUIRES: the work that is running does not wait for the destroying thread.
    ~SerialQueue();

    // Runs `work` after all that was given before, and returns at once. `work` is destroyed on the
    // queue's thread right after it has run. It may destroy the queue. Empty work is nothing to
    // run.
    void async(Work work);

    // Whether the calling thread is the queue's, or runs work in its place.
    bool isCurrent() const;

    const std::string& label() const;

    Handle handle() const;

  private:
    std::shared_ptr<State> state_;
};

}  // namespace halvane

#endif
