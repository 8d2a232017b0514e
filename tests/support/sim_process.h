// halvaned-sim as a process of the test's own, up to its end.
#ifndef TESTS_SUPPORT_SIM_PROCESS_H
#define TESTS_SUPPORT_SIM_PROCESS_H

#include <array>
#include <csignal>
#include <fcntl.h>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "tests/support/bus_caller.h"
#include "tests/support/spawn_program.h"

namespace halvane::testing {

class SimProcess {
  public:
    // Starts it with the options, and returns once it is ready, or has closed its standard output.
    explicit SimProcess(std::vector<std::string> options = {"--private"}) {
        options.insert(options.begin(), HALVANE_SIM);
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
        process_ = spawnProgram(std::move(options), {.output = ends[1]});
        ::close(ends[1]);
        output_ = ends[0];
        for (std::string line; !(line = readLine()).empty();) {
            lines_.push_back(line);
            if (line == "ready\n") return;
        }
    }
    SimProcess(const SimProcess&) = delete;
    SimProcess& operator=(const SimProcess&) = delete;
    ~SimProcess() {
        if (process_ > 0) stop(SIGTERM);
        ::close(output_);
    }

    // What it printed until it was ready, newlines included.
    const std::vector<std::string>& lines() const { return lines_; }

    // The rest of a line "export DBUS_SYSTEM_BUS_ADDRESS=".
    std::string address() const {
        const std::string start = "export DBUS_SYSTEM_BUS_ADDRESS=";
        for (const std::string& line : lines_) {
            if (line.rfind(start, 0) == 0) {
                return line.substr(start.size(), line.size() - start.size() - 1);
            }
        }
        throw std::runtime_error("no address");
    }

    // The next line of its output; empty where that has ended.
    std::string readLine() const {
        std::string line;
        for (char byte = 0; (line.empty() || byte != '\n') && ::read(output_, &byte, 1) == 1;) {
            line += byte;
        }
        return line;
    }

    // Sends the signal, and waits.
    int stop(int signal) {
        ::kill(process_, signal);
        return wait();
    }

    // The exit status, once it has ended; -1 where a signal ended it.
    int wait() {
        int status = 0;
        ::waitpid(process_, &status, 0);
        process_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

  private:
    pid_t process_ = -1;
    int output_ = -1;
    std::vector<std::string> lines_;
};

}  // namespace halvane::testing

#endif
