// Runs halvaned-sim as a process for a test.
#ifndef TESTS_SUPPORT_SIM_PROCESS_H
#define TESTS_SUPPORT_SIM_PROCESS_H

#include <csignal>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/output_pipe.h"
#include "tests/support/spawned_process.h"

namespace halvane::testing {

class SimProcess {
  public:
    // Starts it with the options. Returns when it is ready, or has closed its standard output.
    explicit SimProcess(std::vector<std::string> options = {"--private"})
        : process_(wordsWith(std::move(options)), {.output = output_.writer()}) {
        output_.closeWriter();
        for (std::string line; !(line = readLine()).empty();) {
            lines_.push_back(line);
            if (line == "ready\n") return;
        }
    }
    SimProcess(const SimProcess&) = delete;
    SimProcess& operator=(const SimProcess&) = delete;
    ~SimProcess() { stop(SIGTERM); }

    // Its output up to readiness, newlines included.
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

    // Returns the next line of its output; empty at the end.
    std::string readLine() const { return output_.readLine(); }

    // As SpawnedProcess has them.
    int stop(int signal) { return process_.stop(signal); }
    int wait() { return process_.wait(); }

  private:
    static std::vector<std::string> wordsWith(std::vector<std::string> options) {
        options.insert(options.begin(), HALVANE_SIM);
        return options;
    }

    OutputPipe output_;
    SpawnedProcess process_;
    std::vector<std::string> lines_;
};

}  // namespace halvane::testing

#endif
