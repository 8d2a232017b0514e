// The options of commands that print lists of networks: which networks, and how they are shown.
#ifndef TOOLS_HALVANE_OPTIONS_LIST_OPTIONS_H
#define TOOLS_HALVANE_OPTIONS_LIST_OPTIONS_H

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "halvane/air/finding.h"
#include "halvane/base/mac_address.h"
#include "halvane/base/result.h"
#include "halvane/utils/cli.h"

#include "tools/halvane/networks/group_table.h"
#include "tools/halvane/networks/network_columns.h"
#include "tools/halvane/networks/network_filter.h"
#include "tools/halvane/networks/network_order.h"
#include "tools/halvane/options/argument.h"
#include "tools/halvane/output/format.h"
#include "tools/halvane/output/glyphs.h"
#include "tools/halvane/output/theme.h"

namespace halvane::tool {

struct ListOptions {
    std::size_t limit = 0;  // rows; 0: all
    std::size_t mostNetworks = 0;
    std::optional<std::size_t> width{};  // cells
    ListKind list = ListKind::Captures;
    NetworkFilter filter{};
    std::vector<const NetworkColumn*> columns{};  // empty: those of the width
    NetworkOrder order = defaultOrder();
    Grouping grouping = Grouping::None;
    ColorChoice color = ColorChoice::Auto;
    std::optional<Format> format{};  // absent: not typed
    TextWishes text{};
    bool isSorted = false;           // the order was typed
    bool isColumnsHelp = false;      // only the columns are to be listed
    bool areAddressesShown = false;  // below each group
    bool isWide = false;
    bool isQuiet = false;
    std::optional<air::Severity> findings{};  // absent: not typed
    std::optional<MacAddress> bssid{};        // the first that was typed without a mask
};

// The rows for a command's table of options, by the question that they answer: "Which networks",
// "What to show" and "How". All commands share one place for what is typed, because only one runs
// at a time.
std::span<const CLIOption> filterOptions();
std::span<const CLIOption> findingsFilterOption();  // for a command that lists no findings
std::span<const CLIOption> showOptions();
std::span<const CLIOption> mannerOptions();

// Returns what these options have read since the last call. The columns are those of the list.
Result<ListOptions, UsageError> takeListOptions(ListKind list);
Result<ListOptions, UsageError> takeListOptions();  // of captures

// Returns why an option of the table does not go with `other`, which prints no table: grouping,
// columns, a limit, and without `hasOrder` the order too. Absent if none of these was typed.
std::optional<UsageError> tableOptionBeside(std::string_view other, const ListOptions& options,
                                            bool hasOrder);

// Returns whether --findings asks for the findings in place of the networks: without a format.
// Otherwise it becomes a condition of the filter.
bool takeFindings(ListOptions& options);

// Makes --findings, if it was typed, a condition of the filter.
void filterByFindings(ListOptions& options);

}  // namespace halvane::tool

#endif
