// A counting semaphore.
//
// Threads: any call from any thread. A thread that wait() has released may destroy the semaphore,
// even while the signal() that released it has not yet returned.
#ifndef HALVANE_PLATFORM_OS_COUNTING_SEMAPHORE_H
#define HALVANE_PLATFORM_OS_COUNTING_SEMAPHORE_H

#include <semaphore.h>

namespace halvane {

class CountingSemaphore {
  public:
    // The count to start from.
    // REQUIRES: at most SEM_VALUE_MAX, 2147483647, as ever later.
    explicit CountingSemaphore(unsigned initialValue) { ::sem_init(&semaphore_, 0, initialValue); }

    CountingSemaphore(const CountingSemaphore&) = delete;
    CountingSemaphore& operator=(const CountingSemaphore&) = delete;

    // REQUIRES: no thread waits.
    ~CountingSemaphore() { ::sem_destroy(&semaphore_); }

    // Waits, without a time limit, until the count is above 0, and takes 1 from it.
    void wait() {
        // A signal handler that ran meanwhile is the one other reason to return.
        while (::sem_wait(&semaphore_) != 0) {
        }
    }

    // Adds 1 to the count, which releases one waiting thread.
    void signal() { ::sem_post(&semaphore_); }

  private:
    sem_t semaphore_;
};

}  // namespace halvane

#endif
