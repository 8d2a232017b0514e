// The lines of the screen on which networks are watched: a head, the table, and a foot.
//
// A pure function; any thread may call it.
#ifndef TOOLS_HALVANE_NETWORKS_WATCH_SCREEN_H
#define TOOLS_HALVANE_NETWORKS_WATCH_SCREEN_H

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "tools/halvane/networks/network_columns.h"
#include "tools/halvane/networks/watch_list.h"
#include "tools/halvane/output/theme.h"
#include "tools/halvane/survey/network.h"

namespace halvane::tool {

// What the head and the foot tell.
struct WatchStatus {
    std::string interfaces{};      // "wlan1mon"; printable ASCII
    std::optional<int> channel{};  // of the last frame that told it
    WatchList::Counts counts{};
    std::uint64_t frames = 0;
    std::uint64_t dropped = 0;  // by the kernel
    std::chrono::seconds elapsed{0};
    bool isFrozen = false;
    std::string message{};  // in the place of the keys; printable ASCII
};

struct WatchView {
    std::span<const Network> rows{};
    std::vector<const NetworkColumn*> columns{};  // empty: those of the width
    std::size_t width = 80;
    std::size_t height = 24;
};

// Returns `height` lines without their ends. Rows that do not fit are counted in the line above the
// foot. On fewer than ten lines, or forty columns, the head goes, on fewer than five the foot.
std::vector<std::string> watchScreen(const WatchView& view, const WatchStatus& status,
                                     const CellSurroundings& surroundings, const Theme& theme);

}  // namespace halvane::tool

#endif
