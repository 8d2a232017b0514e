// One run of the simulation, from its start until it is told to stop.
#ifndef TOOLS_HALVANED_SIM_SESSION_H
#define TOOLS_HALVANED_SIM_SESSION_H

#include <optional>
#include <string>
#include <vector>

#include "tools/halvaned-sim/world.h"

namespace halvane::sim {

struct SessionOptions {
    bool isPrivate = false;            // on a private bus
    std::vector<std::string> lines;    // control lines to carry out before it is ready
    std::vector<std::string> command;  // runs beside it; empty for none
};

// Simulates until SIGTERM, SIGINT, SIGHUP or SIGQUIT arrives, the line "quit" arrives, the bus is
// gone, or the command has ended. Returns the exit status: that of the command if there is one,
// else 0, or 1 if the bus was lost. By then everything that it started has ended, and its files are
// removed. If it cannot start, prints a message and returns 1; if the command cannot, the status is
// that of a shell.
int simulate(World world, const SessionOptions& options);

// Sends control lines to the simulation on the system bus, and prints its replies. Returns 0; or,
// if a line is refused, prints a message and returns 1 without sending the later lines.
int sendLines(const std::vector<std::string>& lines);

}  // namespace halvane::sim

#endif
