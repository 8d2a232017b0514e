#include "tools/halvane/networks/network_table.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "tools/halvane/output/fitted_table.h"
#include "tools/halvane/output/shown_text.h"
#include "tools/halvane/output/standard_output.h"
#include "tools/halvane/survey/network_moment.h"

namespace halvane::tool {

namespace {

// The width from which on the security has its full name.
constexpr std::size_t kFullSecurityWidth = 160;

// Names of access points and features stand only where they were asked for.
constexpr Squeeze kSqueezes[] = {
    {.column = "features", .least = 8},
    {.column = "ap", .least = 8},
    {.column = "maker", .least = 8},
    {.column = "ssid", .least = 12},
    {.column = "ssid", .least = 4, .from = 40},
};

std::vector<const NetworkColumn*> columnsFor(const NetworkTableOptions& options, ListKind list) {
    if (!options.columns.empty()) return options.columns;
    std::vector<const NetworkColumn*> columns;
    for (const NetworkColumn& column : networkColumns(list)) {
        const bool stands = options.isWide || column.layout.from != kAnyWidth;
        if (stands || &column == options.added) columns.push_back(&column);
    }
    return columns;
}

// What was asked for stands at every width.
std::vector<FittedColumn> layoutsOf(std::span<const NetworkColumn* const> columns,
                                    const NetworkTableOptions& options) {
    std::vector<FittedColumn> layouts;
    for (const NetworkColumn* const column : columns) {
        FittedColumn& layout = layouts.emplace_back(column->layout);
        if (options.columns.empty() && column != options.added) continue;
        layout.from = 0;
        layout.below = kAnyWidth;
        layout.isLeftOutUntold = false;
    }
    return layouts;
}

bool isLost(const Network& network) {
    return network.moment != nullptr && network.moment->state == NetworkMoment::State::Lost;
}

// Lays the table out line by line.
class Drawing {
  public:
    Drawing(std::span<const Network> networks, const NetworkTableOptions& options,
            const CellSurroundings& surroundings, const Theme& theme)
        : networks_(networks),
          surroundings_(surroundings),
          theme_(theme),
          columns_(columnsFor(options, surroundings.list)),
          layouts_(layoutsOf(columns_, options)),
          table_({layouts_, kSqueezes}, options.isWide ? std::nullopt : options.width) {
        surroundings_.hasFullSecurity = options.width.value_or(0) >= kFullSecurityWidth;
        surroundings_.hasAddress = hasColumn("bssid");
    }

    // The header first, and behind the last row where the first has scrolled away.
    template <typename Put>
    void draw(std::optional<std::size_t> terminalLines, Put putLine) {
        for (const Network& network : networks_) table_.fit(rowOf(network));
        table_.settle();
        fitMakers();
        const std::string header = table_.header(theme_);
        putLine(header);
        const ShownText mark = ownText(surroundings_.glyphs.cut, surroundings_.rules);
        for (const Network& network : networks_) {
            putLine(table_.line(rowOf(network), theme_, mark));
        }
        if (FittedTable::repeatsHeader(networks_.size(), terminalLines)) putLine(header);
    }

  private:
    bool hasColumn(std::string_view name) const {
        return std::ranges::any_of(table_.standing(),
                                   [&](std::size_t index) { return layouts_[index].name == name; });
    }

    std::vector<FittedCell> rowOf(const Network& network) const {
        std::vector<FittedCell> row;
        row.reserve(table_.standing().size());
        for (const std::size_t index : table_.standing()) {
            row.push_back(columns_[index]->cell(network, surroundings_));
        }
        if (isLost(network)) {
            for (FittedCell& cell : row) cell.meaning = Meaning::Secondary;
        }
        return row;
    }

    // A maker keeps the whole words that fit into the column.
    void fitMakers() {
        const auto& standing = table_.standing();
        for (std::size_t i = 0; i < standing.size(); ++i) {
            if (std::string_view(layouts_[standing[i]].name) != "maker") continue;
            surroundings_.makerCells = std::min(surroundings_.makerCells, table_.cellsOf(i));
        }
    }

    std::span<const Network> networks_;
    CellSurroundings surroundings_;
    const Theme& theme_;
    const std::vector<const NetworkColumn*> columns_;
    const std::vector<FittedColumn> layouts_;
    FittedTable table_;
};

}  // namespace

std::vector<std::string> networkLines(std::span<const Network> networks,
                                      const NetworkTableOptions& options,
                                      const CellSurroundings& surroundings, const Theme& theme) {
    std::vector<std::string> lines;
    Drawing(networks, options, surroundings, theme)
        .draw(std::nullopt, [&lines](const std::string& line) { lines.push_back(line); });
    return lines;
}

void printNetworks(std::span<const Network> networks, const NetworkTableOptions& options,
                   const CellSurroundings& surroundings, const Theme& theme, std::FILE* stream) {
    if (networks.empty()) return;
    const std::size_t count =
        options.limit == 0 ? networks.size() : std::min(options.limit, networks.size());
    Drawing(networks.first(count), options, surroundings, theme)
        .draw(options.lines, [stream](const std::string& line) { put(line, stream); });
    if (count == networks.size()) return;
    put(std::string(surroundings.glyphs.cut) + ' ' + std::to_string(networks.size() - count) +
            " more (--limit=0 shows all)\n",
        stream);
}

}  // namespace halvane::tool
