// The program that runs beside the simulation.
#ifndef TOOLS_HALVANED_SIM_PROGRAM_H
#define TOOLS_HALVANED_SIM_PROGRAM_H

#include <csignal>
#include <functional>
#include <memory>
#include <string>
#include <sys/types.h>
#include <systemd/sd-event.h>
#include <vector>

#include "halvane/base/result.h"
#include "halvane/platform/bus/event_loop_internal.h"

#include "tools/halvaned-sim/event_loop.h"

namespace halvane::sim {

class Program {
  public:
    // The status that a shell would report: 128 plus the signal number for a killed program.
    using EndHandler = std::function<void(int status)>;

    // Why a program could not be started.
    struct Refusal {
        std::string reason;  // names the program
        int status = 0;      // 127 if there is no such program, 126 if it cannot be run
    };

    // Runs words[0], found through PATH, with the signals of `mask` blocked. `onEnd` is called from
    // the loop.
    // REQUIRES: SIGCHLD is blocked.
    static Result<std::unique_ptr<Program>, Refusal> start(sd_event* event,
                                                           std::vector<std::string> words,
                                                           const sigset_t& mask, EndHandler onEnd);
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    // Kills the program if it is still running.
    ~Program();

    // Asks the program to end, and kills it if it has not ended after three seconds.
    void terminate();

  private:
    Program(sd_event* event, EndHandler onEnd);

    void watch();

    static int ended(sd_event_source*, const siginfo_t* info, void* program);

    sd_event* const event_;
    const EndHandler onEnd_;
    pid_t process_ = -1;  // -1 after it has been waited for
    EventSourcePointer child_;
    EventSourcePointer patience_;
};

}  // namespace halvane::sim

#endif
