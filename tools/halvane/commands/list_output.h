// How commands print lists of networks.
#ifndef TOOLS_HALVANE_COMMANDS_LIST_OUTPUT_H
#define TOOLS_HALVANE_COMMANDS_LIST_OUTPUT_H

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "tools/halvane/networks/network_columns.h"
#include "tools/halvane/options/list_options.h"
#include "tools/halvane/output/format.h"
#include "tools/halvane/survey/network.h"

namespace halvane::tool {

// What the cells of a list on standard output depend on. `ends` are those of the captures, which
// the result borrows.
CellSurroundings cellSurroundings(const ListOptions& options,
                                  std::span<const std::optional<std::int64_t>> ends);

// Prints a table that fits standard output, or CSV.
// REQUIRES: the format is one of these.
void printList(std::span<const Network> networks, const ListOptions& options, Format format,
               const CellSurroundings& surroundings);

// Prints the columns that there are, with what they mean.
void printColumnsHelp();

// Prints lines on standard error, broken where it is a terminal and too narrow. Empty ones are left
// out.
void printSummary(const std::vector<std::string>& lines, const ListOptions& options);

}  // namespace halvane::tool

#endif
