// Whether the daemon goes away, for commands whose request is answered in the same way with and
// without one.
#ifndef TOOLS_HALVANE_COMMANDS_DAEMON_WATCH_H
#define TOOLS_HALVANE_COMMANDS_DAEMON_WATCH_H

#include <atomic>
#include <memory>

#include "halvane/platform/bus/service_connection.h"
#include "halvane/platform/os/serial_queue.h"

namespace halvane::tool {

// It asks the daemon over a connection of its own, and waits for the answer, of whatever kind.
class DaemonWatch {
  public:
    // From now on the daemon is watched, if it answers.
    DaemonWatch();
    DaemonWatch(const DaemonWatch&) = delete;
    DaemonWatch& operator=(const DaemonWatch&) = delete;

    // Whether the daemon has left the bus, or the bus is gone. The daemon may have come back. False
    // where it could not be watched.
    bool hasDaemonLeft();

  private:
    class Question;

    // Whether the daemon answered, and was there to the end.
    bool ask();

    std::atomic<bool> hasLeft_ = false;
    std::weak_ptr<Question> question_;  // the queue's
    SerialQueue queue_;
    const std::unique_ptr<ServiceConnection> connection_;
    bool isWatching_ = false;
};

}  // namespace halvane::tool

#endif
