// Whether the daemon goes away, for commands whose request is answered in the same way with and
// without one.
#ifndef TOOLS_HALVANE_DAEMON_WATCH_H
#define TOOLS_HALVANE_DAEMON_WATCH_H

#include <memory>

#include "halvane/platform/serial_queue.h"
#include "halvane/platform/service_connection.h"

namespace halvane::tool {

// It asks the daemon over a connection of its own, and waits for the answer, of whatever kind.
class DaemonWatch {
  public:
    // From now on the daemon is watched.
    DaemonWatch();
    DaemonWatch(const DaemonWatch&) = delete;
    DaemonWatch& operator=(const DaemonWatch&) = delete;

    // Whether the daemon has left the bus, or the bus is gone. It may have come back.
    bool hasDaemonLeft();

  private:
    void ask();

    SerialQueue queue_;
    bool hasLeft_ = false;  // the queue's, and of who waits for it
    const std::unique_ptr<ServiceConnection> connection_;
};

}  // namespace halvane::tool

#endif
