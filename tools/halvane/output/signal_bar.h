// Signal as a picture, from -95 dBm (nothing) to -35 dBm (all).
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_OUTPUT_SIGNAL_BAR_H
#define TOOLS_HALVANE_OUTPUT_SIGNAL_BAR_H

#include <string>

#include "tools/halvane/output/glyphs.h"

namespace halvane::tool {

// Returns a bar of at most four cells, to the nearest of the steps that the glyphs have, at least
// one.
std::string signalBar(int dBm, const Glyphs& glyphs);

// Returns one cell: the range is divided into as many equal bands as the glyphs have levels, and a
// band's lower end belongs to it.
const char* signalLevel(int dBm, const Glyphs& glyphs);

}  // namespace halvane::tool

#endif
