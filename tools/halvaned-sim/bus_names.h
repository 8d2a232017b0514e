// The names of the simulation on the bus.
#ifndef TOOLS_HALVANED_SIM_BUS_NAMES_H
#define TOOLS_HALVANED_SIM_BUS_NAMES_H

#include "halvane/model/daemon_service.h"

namespace halvane::sim {

// The control of the simulation, which a real daemon does not have. It has its own name, because
// the simulation may lack the daemon's name.
inline constexpr const char kControlName[] = HALVANE_DAEMON_SERVICE_NAME ".Simulation";
inline constexpr const char kControlPath[] = "/org/halvane/halvaned/Simulation";

// The names of two errors: the refusal of a line, and the reply to a command with the fault
// "error".
inline constexpr const char kRefusedError[] = HALVANE_DAEMON_SERVICE_NAME ".Simulation.Refused";
inline constexpr const char kFailedError[] = HALVANE_DAEMON_SERVICE_NAME ".Error.Failed";

}  // namespace halvane::sim

#endif
