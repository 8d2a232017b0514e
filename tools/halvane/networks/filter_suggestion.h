// What a filter that lets no network through was meant to be.
//
// A pure function; any thread may call it.
#ifndef TOOLS_HALVANE_NETWORKS_FILTER_SUGGESTION_H
#define TOOLS_HALVANE_NETWORKS_FILTER_SUGGESTION_H

#include <span>
#include <string>

#include "tools/halvane/networks/network_filter.h"
#include "tools/halvane/survey/network.h"

namespace halvane::tool {

// "did you mean 'KITRI_BoB' (12)?", with the number of networks of that name, or
// "did you mean B8:55:10:E0:10:52?". Empty if nothing that is there is near, or if the option is
// neither --ssid nor --bssid.
std::string filterSuggestion(const NetworkFilter::Share& share, std::span<const Network> networks);

}  // namespace halvane::tool

#endif
