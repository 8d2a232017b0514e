// The screen that lists the keys of a watch.
//
// A pure function; any thread may call it.
#ifndef TOOLS_HALVANE_NETWORKS_WATCH_KEYS_SCREEN_H
#define TOOLS_HALVANE_NETWORKS_WATCH_KEYS_SCREEN_H

#include <cstddef>
#include <string>
#include <vector>

#include "tools/halvane/output/theme.h"

namespace halvane::tool {

// Returns at most `height` lines without their ends. What does not fit is cut off.
std::vector<std::string> watchKeysScreen(std::size_t width, std::size_t height, const Theme& theme);

}  // namespace halvane::tool

#endif
