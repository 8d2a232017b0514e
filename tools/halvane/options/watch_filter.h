// What passes while networks are watched: the filter of the command line, and what keys choose.
//
// Pure functions; any thread may call them.
#ifndef TOOLS_HALVANE_OPTIONS_WATCH_FILTER_H
#define TOOLS_HALVANE_OPTIONS_WATCH_FILTER_H

#include <string_view>

#include "tools/halvane/networks/network_filter.h"
#include "tools/halvane/networks/watch_choices.h"

namespace halvane::tool {

// A name or an address that begins with the text, which may be on its way: wildcards and escapes
// are those of --ssid, an address of any case may have a mask as in --bssid.
NetworkCondition typedCondition(std::string_view text);

// The filter of the command line, and both the typed one and the band.
NetworkFilter watchFilter(const NetworkFilter& options, const WatchChoices& choices);

}  // namespace halvane::tool

#endif
