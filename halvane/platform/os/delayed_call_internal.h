// Calls a function after a delay, on a thread of its own.
//
// Threads: any thread may make any call, except as stop() states.
#ifndef HALVANE_PLATFORM_OS_DELAYED_CALL_INTERNAL_H
#define HALVANE_PLATFORM_OS_DELAYED_CALL_INTERNAL_H

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <string_view>
#include <thread>

namespace halvane {

class DelayedCall {
  public:
    // `label` names the thread (threadName()). Throws std::bad_alloc if the system has no room for
    // another thread.
    // REQUIRES: `call` throws nothing.
    DelayedCall(std::string_view label, std::function<void()> call);
    DelayedCall(const DelayedCall&) = delete;
    DelayedCall& operator=(const DelayedCall&) = delete;

    // Calls stop().
    ~DelayedCall();

    // Schedules one call after `delay`. It replaces a call that is still scheduled.
    void schedule(std::chrono::steady_clock::duration delay);

    // Waits for a running call. None is made afterwards.
    // REQUIRES: neither called from `call`, nor by two threads at once.
    void stop();

  private:
    void run();

    const std::function<void()> call_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::optional<std::chrono::steady_clock::time_point> due_;
    bool isStopped_ = false;
    std::thread thread_;
};

}  // namespace halvane

#endif
