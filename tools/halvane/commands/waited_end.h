// Waits for the end of a command that does not end by itself.
#ifndef TOOLS_HALVANE_COMMANDS_WAITED_END_H
#define TOOLS_HALVANE_COMMANDS_WAITED_END_H

#include <atomic>

#include "halvane/platform/os/counting_semaphore.h"

namespace halvane::tool {

class WaitedEnd {
  public:
    enum class Reason : int { DaemonRefused, OutputLost };

    WaitedEnd() = default;
    WaitedEnd(const WaitedEnd&) = delete;
    WaitedEnd& operator=(const WaitedEnd&) = delete;

    // Ends the wait, from any thread. The first reason counts.
    void end(Reason reason) noexcept;

    // REQUIRES: called once.
    Reason wait();

  private:
    static constexpr int kNotYet = -1;

    std::atomic<int> reason_ = kNotYet;
    CountingSemaphore ended_{0};
};

}  // namespace halvane::tool

#endif
