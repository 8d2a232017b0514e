// Where the simulation is found on the bus.
#ifndef TOOLS_HALVANED_SIM_BUS_NAMES_H
#define TOOLS_HALVANED_SIM_BUS_NAMES_H

#include "halvane/model/daemon_service.h"

namespace halvane::sim {

// The daemon.
inline constexpr const char kObjectPath[] = "/org/halvane/halvaned";

// What a daemon does not have: the way to tell the simulation what happens. It has a name of its
// own, since the simulation may have to do without the daemon's.
inline constexpr const char kControlName[] = HALVANE_DAEMON_SERVICE_NAME ".Simulation";
inline constexpr const char kControlPath[] = "/org/halvane/halvaned/Simulation";

// The name of the error that refuses a line, and of the one that a failing command answers.
inline constexpr const char kRefusedError[] = HALVANE_DAEMON_SERVICE_NAME ".Simulation.Refused";
inline constexpr const char kFailedError[] = HALVANE_DAEMON_SERVICE_NAME ".Error.Failed";

}  // namespace halvane::sim

#endif
