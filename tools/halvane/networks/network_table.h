// Prints networks as a table that fits the terminal.
#ifndef TOOLS_HALVANE_NETWORKS_NETWORK_TABLE_H
#define TOOLS_HALVANE_NETWORKS_NETWORK_TABLE_H

#include <cstddef>
#include <cstdio>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "tools/halvane/networks/network_columns.h"
#include "tools/halvane/output/theme.h"
#include "tools/halvane/survey/network.h"

namespace halvane::tool {

struct NetworkTableOptions {
    std::vector<const NetworkColumn*> columns{};  // in this order; empty: those of the width
    const NetworkColumn* added = nullptr;         // stands behind those of the width
    std::optional<std::size_t> width{};           // cells; absent: nothing is cut or dropped
    bool isWide = false;                          // all columns, without a width
    std::size_t limit = 0;                        // rows; 0: all
    std::optional<std::size_t> lines{};           // of the terminal
};

// The lines of the table, each with its end: the header, then one for each network. Of the options,
// `limit` and `lines` do not count.
std::vector<std::string> networkLines(std::span<const Network> networks,
                                      const NetworkTableOptions& options,
                                      const CellSurroundings& surroundings, const Theme& theme);

// Prints nothing without networks.
void printNetworks(std::span<const Network> networks, const NetworkTableOptions& options,
                   const CellSurroundings& surroundings, const Theme& theme, std::FILE* stream);

}  // namespace halvane::tool

#endif
