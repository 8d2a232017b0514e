// What `halvane scan` does with a channel to the kernel.
#ifndef TOOLS_HALVANE_COMMANDS_SCAN_H
#define TOOLS_HALVANE_COMMANDS_SCAN_H

#include <chrono>

#include "tools/halvane/input/nl80211_channel.h"
#include "tools/halvane/options/scan_options.h"

namespace halvane::tool {

// Prints the list of an interface, and returns the exit status. `now` returns the time of
// CLOCK_BOOTTIME.
int scan(Nl80211Channel& channel, const ScanOptions& options, std::chrono::nanoseconds (*now)());

}  // namespace halvane::tool

#endif
