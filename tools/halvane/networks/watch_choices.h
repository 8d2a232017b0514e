// What the user of a watch has chosen by keys: which networks, in which order, and which page.
//
// Plain values and a pure function; any thread may call it.
#ifndef TOOLS_HALVANE_NETWORKS_WATCH_CHOICES_H
#define TOOLS_HALVANE_NETWORKS_WATCH_CHOICES_H

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "halvane/air/channel.h"
#include "halvane/base/mac_address.h"

#include "tools/halvane/input/key.h"
#include "tools/halvane/networks/group_table.h"
#include "tools/halvane/networks/network_columns.h"
#include "tools/halvane/networks/network_order.h"

namespace halvane::tool {

enum class WatchPage { List, OneNetwork, Keys };

struct WatchChoices {
    WatchPage page = WatchPage::List;
    WatchPage behindKeys = WatchPage::List;  // the page before that of the keys
    std::u32string filter{};                 // as typed; empty: none
    bool isTyping = false;                   // the filter
    std::optional<air::Band> band{};         // absent: all
    Grouping grouping = Grouping::None;
    NetworkOrder order = defaultOrder();
    bool isFrozen = false;
    std::optional<MacAddress> chosen{};  // a row, or the network of the page
    bool isEnded = false;

    bool operator==(const WatchChoices&) const = default;

    // The filter in UTF-8.
    std::string filterText() const;

    // Whether no row may move or leave.
    bool holdRows() const { return isFrozen || chosen.has_value(); }
};

// What keys work on.
struct WatchScene {
    std::span<const MacAddress> rows{};               // all of them, from the top
    std::size_t page = 1;                             // rows that the screen shows at once
    std::span<const NetworkColumn* const> columns{};  // to sort by
};

// Returns the choices after a key. Keys without a meaning change nothing.
WatchChoices pressed(WatchChoices choices, Key key, const WatchScene& scene);

// The columns to sort by among those that stand at a width, or among `columns` if these are asked
// for: those with a title and a value, each once.
std::vector<const NetworkColumn*> sortColumns(std::span<const NetworkColumn* const> columns,
                                              std::size_t width);

// The row that stands first on a screen of `page` rows, where `first` did before: the chosen one is
// to be seen. Without a chosen one it is the first of all.
std::size_t firstRow(std::size_t first, std::optional<std::size_t> chosen, std::size_t rows,
                     std::size_t page);

}  // namespace halvane::tool

#endif
