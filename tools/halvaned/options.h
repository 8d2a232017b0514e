// The options of halvaned.
#ifndef TOOLS_HALVANED_OPTIONS_H
#define TOOLS_HALVANED_OPTIONS_H

#include "halvane/utils/cli.h"

#include "tools/halvaned/hosting/daemon.h"

namespace halvane::hosting {

// The table for CLIParse().
CLIOption* daemonOptions();

// Returns what CLIParse() has read.
DaemonOptions takeDaemonOptions();

}  // namespace halvane::hosting

#endif
