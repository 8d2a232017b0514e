// How commands print lists of networks.
#ifndef TOOLS_HALVANE_COMMANDS_LIST_OUTPUT_H
#define TOOLS_HALVANE_COMMANDS_LIST_OUTPUT_H

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/mac_address.h"

#include "tools/halvane/networks/network_columns.h"
#include "tools/halvane/options/list_options.h"
#include "tools/halvane/output/format.h"
#include "tools/halvane/output/record_writer.h"
#include "tools/halvane/output/text_style.h"
#include "tools/halvane/survey/network.h"
#include "tools/halvane/survey/survey.h"

namespace halvane::tool {

// What the cells of a list on standard output depend on. `ends` are those of the captures, which
// the result borrows.
CellSurroundings cellSurroundings(const ListOptions& options,
                                  std::span<const std::optional<std::int64_t>> ends);

// Prints a table that fits standard output, or CSV.
// REQUIRES: the format is one of these.
void printList(std::span<const Network> networks, const ListOptions& options, Format format,
               const CellSurroundings& surroundings);

// Writes the records of networks that were heard, and ends the document. Stops where the output is
// lost. The record of a sender tells of the networks that share its beacons.
void printRecords(std::span<const Network> networks, RecordWriter& writer);

// How texts on standard output are laid out.
TextStyle listTextStyle(const ListOptions& options);

// Prints what is wrong with the networks.
// REQUIRES: options.findings is not absent.
void printFindings(std::span<const Network> networks, const ListOptions& options);

// Who the IEEE assigned the address to. The system's list is read for the first address that may
// stand in it.
std::optional<std::string_view> listedMaker(const MacAddress& address);

// Whether the format is a table or CSV. The others print records.
bool isList(Format format);

// Returns the networks that pass the filter, in their order; the others stand behind them. Lists
// begin with the strongest network. Records stay in the order in which they were first heard,
// unless another one was typed.
std::span<Network> listed(std::vector<Network>& all, const ListOptions& options, Format format,
                          const CellSurroundings& surroundings);

// Prints the columns of the list, with what they mean.
void printColumnsHelp(ListKind list);

// The lines of the summary that tell of the networks: of those that pass the filter, or, if none
// does, what each option alone lets through. `all` are those of the survey.
std::vector<std::string> summaryOfNetworks(const Survey& survey, const ListOptions& options,
                                           std::span<const Network> all,
                                           std::span<const Network> shown);

// Prints lines on standard error, broken where it is a terminal and too narrow. Empty ones are left
// out.
void printSummary(const std::vector<std::string>& lines, const ListOptions& options);

}  // namespace halvane::tool

#endif
