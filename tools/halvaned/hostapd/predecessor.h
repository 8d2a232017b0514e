// What an earlier daemon that could not end in order has left in the runtime folder.
//
// Its hostapd gets SIGTERM from the kernel when the daemon dies, but may be slow, stopped or deaf.
//
// Threads: the thread that runs the loop.
#ifndef TOOLS_HALVANED_HOSTAPD_PREDECESSOR_H
#define TOOLS_HALVANED_HOSTAPD_PREDECESSOR_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <sys/types.h>
#include <systemd/sd-event.h>
#include <vector>

#include "halvane/platform/bus/event_loop_internal.h"
#include "halvane/platform/os/file_internal.h"

#include "tools/halvaned/hostapd/event_source.h"

namespace halvane::hosting {

class Predecessor {
  public:
    // Called once, from the loop, with the number of processes that were ended.
    using Done = std::function<void(std::size_t ended)>;

    // Ends each process that a file NAME.pid of the folder names, if its command line has the
    // folder's NAME.conf as its last word: the number alone may be another process's by now. A
    // process that does not end by SIGTERM within the grace time, in microseconds, is killed. Then
    // removes NAME.pid and NAME.conf, and the files of control sockets.
    //
    // Nothing happens after the object is destroyed, which Done may do, except that processes which
    // have not ended are killed then.
    Predecessor(sd_event* loop, std::string folder, std::uint64_t grace, Done done);
    Predecessor(const Predecessor&) = delete;
    Predecessor& operator=(const Predecessor&) = delete;
    ~Predecessor();

  private:
    struct Process;

    void find(const std::string& name);
    void killAll();
    void ended(const Process& process);
    void finishIfAlone();
    void removeFiles() const;

    static int hasEnded(sd_event_source*, int, std::uint32_t, void* process);

    sd_event* const loop_;
    const std::string folder_;
    Done done_;
    std::vector<std::string> names_;  // of interfaces
    std::vector<std::unique_ptr<Process>> processes_;
    std::size_t endedCount_ = 0;
    EventSourcePointer patience_;
    EventSourcePointer finish_;
};

}  // namespace halvane::hosting

#endif
