// The columns of a list of networks: one table for the terminal, for CSV and for sorting.
//
// Constant tables and pure functions; any thread may use them.
#ifndef TOOLS_HALVANE_NETWORKS_NETWORK_COLUMNS_H
#define TOOLS_HALVANE_NETWORKS_NETWORK_COLUMNS_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "tools/halvane/input/maker_list.h"
#include "tools/halvane/output/fitted_table.h"
#include "tools/halvane/output/glyphs.h"
#include "tools/halvane/output/maker_name.h"
#include "tools/halvane/output/shown_text.h"
#include "tools/halvane/survey/network.h"

namespace halvane::tool {

// What a list is of: captures, the kernel's list, or what is heard now. Each has columns of its
// own.
enum class ListKind { Captures, Scan, Watch };

// What the cells depend on beside the network.
struct CellSurroundings {
    const Glyphs& glyphs;
    TextRules rules;
    std::function<const MakerList&()> makers = MakerList::ofSystem;  // read if needed
    std::span<const std::optional<std::int64_t>> captureEnds{};  // as NetworkStatistics::lastTime
    std::size_t makerCells = kMakerCells;
    bool hasAddress = true;        // a column shows the BSSID
    bool hasFullSecurity = false;  // full names of the security
    ListKind list = ListKind::Captures;
};

// A value for programs: absent, a number or a text.
struct PlainValue {
    std::optional<double> number{};
    std::string text{};

    bool isAbsent() const { return !number && text.empty(); }
};

struct NetworkColumn {
    FittedColumn layout;
    FittedCell (*cell)(const Network& network, const CellSurroundings& surroundings);
    // Null where a column is a picture of another one.
    PlainValue (*value)(const Network& network, const CellSurroundings& surroundings);
    const char* meaning;  // a phrase for the list of columns
};

// All columns of such a list; one that has two forms stands twice.
std::span<const NetworkColumn> networkColumns(ListKind list = ListKind::Captures);

// The first with this name that has a value; null if there is none.
const NetworkColumn* networkColumnNamed(std::string_view name, ListKind list = ListKind::Captures);

}  // namespace halvane::tool

#endif
