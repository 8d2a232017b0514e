// Prints groups of networks as a table that fits the terminal.
#ifndef TOOLS_HALVANE_NETWORKS_GROUP_TABLE_H
#define TOOLS_HALVANE_NETWORKS_GROUP_TABLE_H

#include <cstddef>
#include <cstdio>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "tools/halvane/networks/network_columns.h"
#include "tools/halvane/networks/network_groups.h"
#include "tools/halvane/output/theme.h"
#include "tools/halvane/survey/network.h"

namespace halvane::tool {

enum class Grouping { None, Name, Radio };

struct GroupTableOptions {
    Grouping grouping = Grouping::Name;
    std::optional<std::size_t> width{};  // cells; absent: nothing is cut
    std::size_t limit = 0;               // rows; 0: all
    bool areAddressesShown = false;      // below each row, indented
};

// The groups of networks, in the order of their first networks.
// REQUIRES: the grouping is not None.
std::vector<NetworkGroup> groupsOf(std::span<const Network> networks, Grouping grouping);

// The lines of the table, each with its end: the header, then one for each group. Of the options,
// `limit` and `areAddressesShown` do not count.
std::vector<std::string> groupLines(std::span<const NetworkGroup> groups,
                                    const GroupTableOptions& options,
                                    const CellSurroundings& surroundings, const Theme& theme);

// Prints nothing without networks. Groups stand in the order of their first networks.
// REQUIRES: the grouping is not None.
void printGroups(std::span<const Network> networks, const GroupTableOptions& options,
                 const CellSurroundings& surroundings, const Theme& theme, std::FILE* stream);

}  // namespace halvane::tool

#endif
