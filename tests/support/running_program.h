// A program that runs beside the test, which reads what it prints line by line and ends it.
#ifndef TESTS_SUPPORT_RUNNING_PROGRAM_H
#define TESTS_SUPPORT_RUNNING_PROGRAM_H

#include <fcntl.h>
#include <poll.h>
#include <sched.h>
#include <string>
#include <sys/ioctl.h>
#include <utility>
#include <vector>

#include "tests/support/output_pipe.h"
#include "tests/support/spawned_process.h"

namespace halvane::testing {

class RunningProgram {
  public:
    // words[0] is the program's path.
    explicit RunningProgram(std::vector<std::string> words)
        : process_(std::move(words), {.output = output_.writer(), .errors = errors_.writer()}) {
        output_.closeWriter();
        errors_.closeWriter();
    }

    // The next line that it printed, waited for, with its newline; what is left, and then nothing,
    // where the stream has ended.
    std::string outputLine() const { return output_.readLine(); }
    std::string errorLine() const { return errors_.readLine(); }

    // Nobody reads its standard output any more.
    void closeOutput() { output_.closeReader(); }

    // Lets little lie unread, and answers how many bytes: a whole page, which is filled up with
    // writes that fit.
    int narrowOutput() const { return ::fcntl(output_.reader(), F_SETPIPE_SZ, 1); }

    // Waits until that many bytes of its output lie unread, or the stream has ended.
    void waitForUnreadOutput(int bytes) const {
        pollfd end = {output_.reader(), 0, 0};
        for (int unread = 0; unread < bytes && ::poll(&end, 1, 0) == 0; ::sched_yield()) {
            ::ioctl(output_.reader(), FIONREAD, &unread);
        }
    }

    // As SpawnedProcess has them.
    int stop(int signal) { return process_.stop(signal); }
    int wait() { return process_.wait(); }

  private:
    OutputPipe output_;
    OutputPipe errors_;
    SpawnedProcess process_;
};

}  // namespace halvane::testing

#endif
