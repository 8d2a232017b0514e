// The state of the simulation. This code does not know of a bus.
#ifndef TOOLS_HALVANED_SIM_SIMULATION_H
#define TOOLS_HALVANED_SIM_SIMULATION_H

#include "halvane/service/subscribers.h"

#include "tools/halvaned-sim/faults.h"
#include "tools/halvaned-sim/logging_settings.h"
#include "tools/halvaned-sim/world.h"

namespace halvane::sim {

struct Simulation {
    World world;
    LoggingSettings logging;
    Subscribers subscribers;
    Faults faults;
};

}  // namespace halvane::sim

#endif
