// Waiting for a serial queue.
#ifndef TESTS_SUPPORT_SERIAL_QUEUE_WAITS_H
#define TESTS_SUPPORT_SERIAL_QUEUE_WAITS_H

#include <thread>

#include "halvane/platform/os/counting_semaphore.h"
#include "halvane/platform/os/serial_queue.h"

namespace halvane::testing {

// Returns after all earlier work has run.
inline void drain(SerialQueue& queue) {
    CountingSemaphore done(0);
    queue.async([&] { done.signal(); });
    done.wait();
}

// Returns when the queue's thread is waiting for work. From then on runOrAsync() runs work at once.
inline void waitUntilIdle(const SerialQueue& queue) {
    for (bool isHere = false; !isHere;) {
        CountingSemaphore done(0);
        queue.handle().runOrAsync([&, caller = std::this_thread::get_id()] {
            isHere = std::this_thread::get_id() == caller;
            done.signal();
        });
        done.wait();
    }
}

}  // namespace halvane::testing

#endif
