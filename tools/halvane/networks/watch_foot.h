// The last line of a screen on which networks are watched: a message, what is typed, or the keys.
//
// A pure function; any thread may call it.
#ifndef TOOLS_HALVANE_NETWORKS_WATCH_FOOT_H
#define TOOLS_HALVANE_NETWORKS_WATCH_FOOT_H

#include <cstddef>
#include <string>
#include <string_view>

#include "tools/halvane/networks/network_columns.h"
#include "tools/halvane/networks/watch_choices.h"
#include "tools/halvane/output/theme.h"

namespace halvane::tool {

// On fewer lines there is no foot, but for what is typed.
inline constexpr std::size_t kLeastLinesWithFoot = 5;

// The keys lose words as the width does. What is typed keeps its end. A message takes the place of
// the keys; it is printable ASCII, or empty.
std::string watchFoot(const WatchChoices& choices, std::string_view message, std::size_t width,
                      const CellSurroundings& surroundings, const Theme& theme);

}  // namespace halvane::tool

#endif
