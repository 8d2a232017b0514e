// A counting semaphore.
//
// Threads: any thread may make any call. A thread that wait() has released may destroy the
// semaphore, even before the signal() that released it returns.
#ifndef HALVANE_PLATFORM_OS_COUNTING_SEMAPHORE_H
#define HALVANE_PLATFORM_OS_COUNTING_SEMAPHORE_H

#include <semaphore.h>

#include "halvane/base/cxx20.h"

namespace halvane {

class CountingSemaphore {
  public:
    // Sets the initial count.
    // REQUIRES: the count never exceeds SEM_VALUE_MAX, 2147483647, now or later.
    explicit CountingSemaphore(unsigned initialValue) { ::sem_init(&semaphore_, 0, initialValue); }

    CountingSemaphore(const CountingSemaphore&) = delete;
    CountingSemaphore& operator=(const CountingSemaphore&) = delete;

    // REQUIRES: no thread is waiting.
    ~CountingSemaphore() { ::sem_destroy(&semaphore_); }

    // Waits, without a time limit, until the count is above 0, and subtracts 1.
    void wait() {
        // The only other reason to return is that a signal handler ran.
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
