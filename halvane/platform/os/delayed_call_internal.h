// Calls a function some time after it is asked to, on a thread of its own.
//
// Threads: any call from any thread, but for what stop() says.
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
    // `label` names the thread (threadName()). Throws std::bad_alloc where the system has no room
    // for one more.
    // REQUIRES: `call` throws nothing.
    DelayedCall(std::string_view label, std::function<void()> call);
    DelayedCall(const DelayedCall&) = delete;
    DelayedCall& operator=(const DelayedCall&) = delete;

    // stop().
    ~DelayedCall();

    // Makes one call so long from now on, in place of one that still waits for its time.
    void schedule(std::chrono::steady_clock::duration delay);

    // Waits for a call that is running. None is made afterwards.
    // REQUIRES: not called from `call`, nor by two threads at once.
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
