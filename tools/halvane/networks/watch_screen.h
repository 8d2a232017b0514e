// The lines of the screen on which networks are watched: a head, the table, and a foot.
//
// Pure functions; any thread may call them.
#ifndef TOOLS_HALVANE_NETWORKS_WATCH_SCREEN_H
#define TOOLS_HALVANE_NETWORKS_WATCH_SCREEN_H

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "halvane/base/mac_address.h"

#include "tools/halvane/networks/group_table.h"
#include "tools/halvane/networks/network_columns.h"
#include "tools/halvane/networks/watch_choices.h"
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
    std::string message{};  // in the place of the keys; printable ASCII
};

struct WatchView {
    std::span<const Network> rows{};              // that pass
    std::size_t all = 0;                          // rows, whether they pass or not
    std::vector<const NetworkColumn*> columns{};  // empty: those of the width
    WatchChoices choices{};
    std::size_t first = 0;  // of the rows of the screen, the one that stands first
    std::size_t width = 80;
    std::size_t height = 24;
};

// The networks that stand for the rows of the screen: each, or the first of each group.
std::vector<MacAddress> watchRows(std::span<const Network> networks, Grouping grouping);

// The parts of a screen. On fewer than ten lines, or forty columns, the head goes, on fewer than
// five the foot, but not while a filter is typed in it.
struct WatchLayout {
    bool hasHead = false;
    bool hasFoot = false;
    bool isCut = false;    // a line tells how many rows are not shown
    std::size_t page = 0;  // rows that are shown
};
WatchLayout watchLayout(const WatchView& view, std::size_t rows);

// Returns `height` lines without their ends.
// REQUIRES: choices.page is the list.
std::vector<std::string> watchScreen(const WatchView& view, const WatchStatus& status,
                                     const CellSurroundings& surroundings, const Theme& theme);

}  // namespace halvane::tool

#endif
