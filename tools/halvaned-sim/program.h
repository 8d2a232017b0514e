// The program that is run beside the simulation.
#ifndef TOOLS_HALVANED_SIM_PROGRAM_H
#define TOOLS_HALVANED_SIM_PROGRAM_H

#include <csignal>
#include <functional>
#include <stdexcept>
#include <string>
#include <sys/types.h>
#include <systemd/sd-event.h>
#include <vector>

#include "tools/halvaned-sim/event_loop.h"

namespace halvane::sim {

class Program {
  public:
    // The status that a shell would tell: 128 and the number of the signal for one that was killed.
    using EndHandler = std::function<void(int status)>;

    // Runs words[0], looked for where PATH says, with the signals that `mask` blocks.
    // `onEnd` is called from the loop. Throws CannotStart.
    // REQUIRES: SIGCHLD is blocked.
    Program(sd_event* event, std::vector<std::string> words, const sigset_t& mask,
            EndHandler onEnd);
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    // Ends the program at once, if it still runs.
    ~Program();

    // Asks the program to end, and makes it where it has not done so in three seconds.
    void terminate();

    class CannotStart : public std::runtime_error {
      public:
        // 127 where there is no such program, 126 where it cannot be run.
        CannotStart(const std::string& name, int error);
        int status() const { return status_; }

      private:
        int status_;
    };

  private:
    static int ended(sd_event_source*, const siginfo_t* info, void* program);

    sd_event* const event_;
    const EndHandler onEnd_;
    pid_t process_ = -1;  // -1 once it has been waited for
    EventSourcePointer child_;
    EventSourcePointer patience_;
};

}  // namespace halvane::sim

#endif
