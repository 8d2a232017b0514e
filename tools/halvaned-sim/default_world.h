// The world of a simulation without a state file.
#ifndef TOOLS_HALVANED_SIM_DEFAULT_WORLD_H
#define TOOLS_HALVANED_SIM_DEFAULT_WORLD_H

#include "tools/halvaned-sim/world.h"

namespace halvane::sim {

// Two devices with an interface each: wlan0, in the role AP, with one configuration and two
// stations in range; wlan1, in the role STA, with one station in range.
World defaultWorld();

}  // namespace halvane::sim

#endif
