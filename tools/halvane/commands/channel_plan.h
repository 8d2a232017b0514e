// The channels of all bands and widths, which the options of `halvane channels` choose from.
#ifndef TOOLS_HALVANE_COMMANDS_CHANNEL_PLAN_H
#define TOOLS_HALVANE_COMMANDS_CHANNEL_PLAN_H

#include "tools/halvane/options/channel_options.h"
#include "tools/halvane/output/property_table.h"

namespace halvane::tool {

// Prints the chosen channels or operating classes, and returns the exit status. A message tells
// each that is unknown. REQUIRES: `options.isPlan`.
int printChosenChannels(const ChannelOptions& options);

// The members of a channel of the channel map, which the command prints without options.
PropertyRows mappedChannelRows();

}  // namespace halvane::tool

#endif
