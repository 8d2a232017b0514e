// A program that runs beside the test, which reads what it prints line by line and ends it.
#ifndef TESTS_SUPPORT_RUNNING_PROGRAM_H
#define TESTS_SUPPORT_RUNNING_PROGRAM_H

#include <array>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sched.h>
#include <stdexcept>
#include <string>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "tests/support/spawn_program.h"

namespace halvane::testing {

class RunningProgram {
  public:
    // words[0] is the program's path.
    explicit RunningProgram(std::vector<std::string> words) {
        std::array<int, 2> output{}, errors{};
        if (::pipe2(output.data(), O_CLOEXEC) != 0 || ::pipe2(errors.data(), O_CLOEXEC) != 0) {
            throw std::runtime_error("no pipe");
        }
        output_ = output[0];
        errors_ = errors[0];
        process_ = spawnProgram(std::move(words), {.output = output[1], .errors = errors[1]});
        ::close(output[1]);
        ::close(errors[1]);
    }
    RunningProgram(const RunningProgram&) = delete;
    RunningProgram& operator=(const RunningProgram&) = delete;
    ~RunningProgram() {
        if (process_ > 0) stop(SIGKILL);
        closeOutput();
        ::close(errors_);
    }

    // The next line that it printed, waited for, with its newline; what is left, and then nothing,
    // where the stream has ended.
    std::string outputLine() const { return readLine(output_); }
    std::string errorLine() const { return readLine(errors_); }

    // Nobody reads its standard output any more.
    void closeOutput() {
        if (output_ >= 0) ::close(output_);
        output_ = -1;
    }

    // Lets little lie unread, and answers how many bytes: a whole page, which is filled up with
    // writes that fit.
    int narrowOutput() const { return ::fcntl(output_, F_SETPIPE_SZ, 1); }

    // Waits until that many bytes of its output lie unread, or the stream has ended.
    void waitForUnreadOutput(int bytes) const {
        pollfd end = {output_, 0, 0};
        for (int unread = 0; unread < bytes && ::poll(&end, 1, 0) == 0; ::sched_yield()) {
            ::ioctl(output_, FIONREAD, &unread);
        }
    }

    int stop(int signal) {
        ::kill(process_, signal);
        return wait();
    }

    // The exit status, once it has ended; 128 and the number of a signal that ended it.
    int wait() {
        int status = 0;
        ::waitpid(process_, &status, 0);
        process_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }

  private:
    static std::string readLine(int descriptor) {
        std::string line;
        char byte = 0;
        while (byte != '\n' && ::read(descriptor, &byte, 1) == 1) line += byte;
        return line;
    }

    pid_t process_ = -1;
    int output_ = -1;
    int errors_ = -1;
};

}  // namespace halvane::testing

#endif
