// A program that runs beside the test. The test reads its output line by line, and ends it.
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

    // Waits for the program's next line, and returns it with its newline. At the end of the stream
    // it returns the rest, and then nothing.
    std::string outputLine() const { return output_.readLine(); }
    std::string errorLine() const { return errors_.readLine(); }

    // Closes the reading end of the program's standard output.
    void closeOutput() { output_.closeReader(); }

    // Shrinks the pipe so that it holds little unread output, and returns its size in bytes. The
    // size is one page, which writes that divide it fill completely.
    int narrowOutput() const { return ::fcntl(output_.reader(), F_SETPIPE_SZ, 1); }

    // Waits until that many bytes of its output are unread, or the stream has ended.
    void waitForUnreadOutput(int bytes) const {
        pollfd end = {output_.reader(), 0, 0};
        for (int unread = 0; unread < bytes && ::poll(&end, 1, 0) == 0; ::sched_yield()) {
            ::ioctl(output_.reader(), FIONREAD, &unread);
        }
    }

    // As SpawnedProcess has them.
    void send(int signal) const { process_.send(signal); }
    int stop(int signal) { return process_.stop(signal); }
    int wait() { return process_.wait(); }

  private:
    OutputPipe output_;
    OutputPipe errors_;
    SpawnedProcess process_;
};

}  // namespace halvane::testing

#endif
