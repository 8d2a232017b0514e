// A loop that a test turns, with SIGCHLD blocked as its children need it.
#ifndef TESTS_HALVANED_HOSTAPD_TEST_LOOP_H
#define TESTS_HALVANED_HOSTAPD_TEST_LOOP_H

#include <csignal>
#include <cstdint>
#include <pthread.h>
#include <stdexcept>
#include <systemd/sd-event.h>

#include "halvane/platform/bus/event_loop_internal.h"

namespace halvane::testing {

class TestLoop {
  public:
    TestLoop() {
        sigset_t child;
        ::sigemptyset(&child);
        ::sigaddset(&child, SIGCHLD);
        ::pthread_sigmask(SIG_BLOCK, &child, &before_);
        if (!loop_) throw std::runtime_error("no loop");
    }
    TestLoop(const TestLoop&) = delete;
    TestLoop& operator=(const TestLoop&) = delete;
    ~TestLoop() {
        loop_.reset();
        ::pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }

    sd_event* get() const { return loop_.get(); }

    // Turns the loop until the condition holds. The deadline of all tests ends it otherwise.
    template <typename Condition>
    void runUntil(Condition condition) {
        while (!condition()) {
            if (::sd_event_run(get(), UINT64_MAX) < 0) throw std::runtime_error("the loop ended");
        }
    }

    // Turns the loop until nothing is left to do at once.
    void settle() {
        while (::sd_event_run(get(), 0) > 0) {
        }
    }

  private:
    EventPointer loop_ = newEventLoop();
    sigset_t before_{};
};

}  // namespace halvane::testing

#endif
