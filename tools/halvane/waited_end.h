// Waiting for the end of a command that has none of its own: a signal, or something that it finds.
#ifndef TOOLS_HALVANE_WAITED_END_H
#define TOOLS_HALVANE_WAITED_END_H

#include <atomic>

namespace halvane::tool {

class WaitedEnd {
  public:
    enum class Reason : int { Signal, DaemonGone, OutputLost };

    // From now on SIGINT and SIGTERM end the waiting and not the program. A signal that the
    // program was started to ignore stays ignored. Throws std::system_error.
    // REQUIRES: threads that take signals are not there yet.
    WaitedEnd();
    WaitedEnd(const WaitedEnd&) = delete;
    WaitedEnd& operator=(const WaitedEnd&) = delete;
    ~WaitedEnd();

    // Ends the waiting, from any thread. The first reason counts.
    void end(Reason reason) noexcept;

    Reason wait();

  private:
    int signals_ = -1;
    int ended_ = -1;
    std::atomic<int> reason_;
};

}  // namespace halvane::tool

#endif
