// One run of the simulation, from its start until it is told to stop.
#ifndef TOOLS_HALVANED_SIM_SESSION_H
#define TOOLS_HALVANED_SIM_SESSION_H

#include <optional>
#include <string>
#include <vector>

#include "tools/halvaned-sim/world.h"

namespace halvane::sim {

struct SessionOptions {
    bool isPrivate = false;            // on a bus of its own
    std::vector<std::string> lines;    // control lines to follow before it is ready
    std::vector<std::string> command;  // to be run beside it; none where it is empty
};

// Simulates until SIGTERM, SIGINT, SIGHUP or SIGQUIT comes, the line "quit" says so, the bus is
// gone, or the command has ended. Answers the exit status: that of the command, if there is one;
// else 0, or 1 where the bus was lost. Whatever it started has ended then, and what it wrote is
// removed. Throws std::exception where it cannot start.
int simulate(World world, const SessionOptions& options);

// Sends control lines to the simulation that is on the system bus, and prints what it tells.
// Answers 0, or 1 after a message where one is refused; those behind it are not sent.
int sendLines(const std::vector<std::string>& lines);

}  // namespace halvane::sim

#endif
