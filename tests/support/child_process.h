// A child that fork() makes of the test program. It has one thread, however many the program has.
#ifndef TESTS_SUPPORT_CHILD_PROCESS_H
#define TESTS_SUPPORT_CHILD_PROCESS_H

#include <csignal>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace halvane::testing {

// Runs `run` in a child, and then ends the child at once: with status 0 if `run` returns true.
template <typename Run>
pid_t startChild(Run run) {
    const pid_t child = ::fork();
    if (child < 0) throw std::runtime_error("no process");
    if (child > 0) return child;
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);  // a test that crashes leaves no child behind
    ::alarm(120);                        // a child that hangs writes its stack and ends
    ::_exit(run() ? 0 : 1);
}

// Whether `run` returns true in a child.
template <typename Run>
bool isTrueInChild(Run run) {
    const pid_t child = startChild(run);
    int status = -1;
    return ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace halvane::testing

#endif
