// Channels for people.
#ifndef TOOLS_HALVANE_OUTPUT_CHANNEL_TABLE_H
#define TOOLS_HALVANE_OUTPUT_CHANNEL_TABLE_H

#include <vector>

#include "halvane/regulatory/channel.h"

namespace halvane::tool {

// Number, frequency and flags, one line per channel.
void printChannelTable(const std::vector<HalvaneChannel>& channels);

}  // namespace halvane::tool

#endif
