// Notifications of stations as lines of output.
#ifndef TOOLS_HALVANE_OUTPUT_STATION_EVENT_H
#define TOOLS_HALVANE_OUTPUT_STATION_EVENT_H

#include <string>

#include "halvane/daemon/daemon_events.h"

#include "tools/halvane/output/format.h"

namespace halvane::tool {

// The line without its newline: as text, which is safe to show, or as JSON.
std::string lineOf(const StationChange& change, Format format);

}  // namespace halvane::tool

#endif
