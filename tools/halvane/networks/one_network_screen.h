// The screen of one network, for walking up to it: a number to be read at a glance, and a picture
// of the last minute.
//
// Pure functions; any thread may call them.
#ifndef TOOLS_HALVANE_NETWORKS_ONE_NETWORK_SCREEN_H
#define TOOLS_HALVANE_NETWORKS_ONE_NETWORK_SCREEN_H

#include <cstddef>
#include <string>
#include <vector>

#include "halvane/base/mac_address.h"

#include "tools/halvane/networks/network_columns.h"
#include "tools/halvane/networks/watched_signal.h"
#include "tools/halvane/output/theme.h"
#include "tools/halvane/survey/network.h"

namespace halvane::tool {

struct OneNetworkView {
    MacAddress address{};
    const Network* network = nullptr;       // null while it is not heard
    const WatchedSignal* signal = nullptr;  // the same
    WatchedSignal::Time now{};
    std::size_t width = 80;
    std::size_t height = 24;
};

// Whether the last line is left free for a foot. Twelve lines have room for the picture, fourteen
// for both; on fewer the number stays alone.
bool oneNetworkHasFoot(std::size_t height);

// Returns at most `height` lines without their ends.
std::vector<std::string> oneNetworkScreen(const OneNetworkView& view,
                                          const CellSurroundings& surroundings, const Theme& theme);

}  // namespace halvane::tool

#endif
