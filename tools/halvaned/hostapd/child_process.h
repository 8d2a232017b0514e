// A program that runs as a child of the daemon, and never longer than it.
//
// Threads: the thread that runs the loop.
#ifndef TOOLS_HALVANED_HOSTAPD_CHILD_PROCESS_H
#define TOOLS_HALVANED_HOSTAPD_CHILD_PROCESS_H

#include <csignal>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <systemd/sd-event.h>
#include <vector>

#include "halvane/base/result.h"
#include "halvane/platform/bus/event_loop_internal.h"
#include "halvane/platform/os/file_internal.h"

#include "tools/halvaned/hostapd/event_source.h"

namespace halvane::hosting {

// How a program ended.
struct ChildEnd {
    bool wasKilled = false;
    int number = 0;  // the exit status, or the signal that killed it

    // "with status 1" or "by signal 9".
    std::string text() const;
};

class ChildProcess {
  public:
    // Longer lines are cut.
    static constexpr std::size_t kLongestLine = 1024;

    struct Handlers {
        // A line of its output, or of its errors, without the line's end.
        std::function<void(std::string_view)> line = {};
        // Called once, after its last line. It may destroy the ChildProcess.
        std::function<void(const ChildEnd&)> ended = {};
    };

    // Runs words[0], a path. The child has its own process group, no signal blocked or ignored, no
    // open descriptor but the standard ones, nothing to read, and an empty environment. The kernel
    // ends it by SIGTERM if the calling thread ends. Its number is in `numberFile`, for this user
    // alone, before it runs; without a path, nowhere. Returns a sentence if it cannot be started.
    // REQUIRES: SIGCHLD is blocked.
    static Result<std::unique_ptr<ChildProcess>, std::string> start(
        sd_event* loop, std::vector<std::string> words, Handlers handlers,
        const std::string& numberFile = {});
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    // Kills the program if it still runs, and waits for it. No handler is called.
    ~ChildProcess();

    // Its number; -1 after its end.
    pid_t process() const { return process_; }

    // Asks the program to end (SIGTERM), and kills it if it has not ended after the grace time, in
    // microseconds. Later calls, and calls after its end, do nothing.
    void end(std::uint64_t grace);

  private:
    ChildProcess(sd_event* loop, Handlers handlers);

    bool watch(FileDescriptor output);
    void kill();
    void readOutput();
    void take(std::string_view text);
    void finishLine();
    void finish(const ChildEnd& end);

    static int spoke(sd_event_source*, int, std::uint32_t, void* process);
    static int ended(sd_event_source*, const siginfo_t* info, void* process);

    sd_event* const loop_;
    Handlers handlers_;
    pid_t process_ = -1;
    FileDescriptor output_;
    std::string line_;  // what has come of a line
    EventSourcePointer speech_;
    EventSourcePointer child_;
    EventSourcePointer patience_;
    bool isEnding_ = false;
};

}  // namespace halvane::hosting

#endif
