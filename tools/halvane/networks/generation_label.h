// The generation of a network as people name it.
//
// A pure function; any thread may call it.
#ifndef TOOLS_HALVANE_NETWORKS_GENERATION_LABEL_H
#define TOOLS_HALVANE_NETWORKS_GENERATION_LABEL_H

#include <string_view>

#include "tools/halvane/survey/network.h"

namespace halvane::tool {

// "7", "6E" (Wi-Fi 6 at 6 GHz), "6", "5", "4"; before these the letter of the amendment: "g" (with
// OFDM at 2.4 GHz), "a" (at 5 GHz) or "b". "-" if nothing tells it.
std::string_view generationLabel(const Network& network);

}  // namespace halvane::tool

#endif
