// A process that the test has started.
#ifndef TESTS_SUPPORT_SPAWNED_PROCESS_H
#define TESTS_SUPPORT_SPAWNED_PROCESS_H

#include <csignal>
#include <string>
#include <sys/types.h>
#include <sys/wait.h>
#include <utility>
#include <vector>

#include "tests/support/spawn_program.h"

namespace halvane::testing {

// After a wait for its end it sends no signal, because another process may have the same number by
// then.
class SpawnedProcess {
  public:
    SpawnedProcess(std::vector<std::string> words, const StandardStreams& streams)
        : process_(spawnProgram(std::move(words), streams)) {}
    SpawnedProcess(const SpawnedProcess&) = delete;
    SpawnedProcess& operator=(const SpawnedProcess&) = delete;
    ~SpawnedProcess() { stop(SIGKILL); }

    pid_t number() const { return process_; }  // -1 after its end

    void send(int signal) const {
        if (process_ > 0) ::kill(process_, signal);
    }

    // Sends the signal, and waits.
    int stop(int signal) {
        send(signal);
        return wait();
    }

    // Waits for the end, and returns the exit status, or the negative number of the signal that
    // ended it. Later calls return the same.
    int wait() {
        if (process_ > 0) ::waitpid(process_, &status_, 0);
        process_ = -1;
        return WIFEXITED(status_) ? WEXITSTATUS(status_) : -WTERMSIG(status_);
    }

  private:
    pid_t process_;
    int status_ = 0;  // as waitpid tells it
};

}  // namespace halvane::testing

#endif
