#include "tools/halvane/commands/list_output.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <string_view>

#include "tools/halvane/networks/group_table.h"
#include "tools/halvane/networks/network_csv.h"
#include "tools/halvane/networks/network_summary.h"
#include "tools/halvane/networks/network_table.h"
#include "tools/halvane/output/glyphs.h"
#include "tools/halvane/output/standard_output.h"
#include "tools/halvane/output/surroundings.h"
#include "tools/halvane/output/theme.h"

namespace halvane::tool {

namespace {

void printTable(std::span<const Network> networks, const ListOptions& options,
                const CellSurroundings& cells) {
    const Surroundings output = surroundingsOf(stdout);
    NetworkTableOptions table{.columns = options.columns,
                              .added = options.findings ? networkColumnNamed("findings") : nullptr,
                              .width = options.width,
                              .isWide = options.isWide,
                              .limit = options.limit};
    // What a program reads is neither cut nor dropped.
    if (output.isTerminal) {
        if (!table.width) table.width = output.columns;
        table.lines = output.lines;
    }
    const Theme theme(options.color, output);
    if (options.grouping == Grouping::None) {
        return printNetworks(networks, table, cells, theme, stdout);
    }
    const GroupTableOptions groups{.grouping = options.grouping,
                                   .width = options.isWide ? std::nullopt : table.width,
                                   .limit = options.limit,
                                   .areAddressesShown = options.areAddressesShown};
    printGroups(networks, groups, cells, theme, stdout);
}

}  // namespace

CellSurroundings cellSurroundings(const ListOptions& options,
                                  std::span<const std::optional<std::int64_t>> ends) {
    const Surroundings output = surroundingsOf(stdout);
    return {.glyphs = glyphsOf(glyphSetFor(output, options.text)),
            .rules = textRulesFor(output, options.text),
            .captureEnds = ends};
}

void printList(std::span<const Network> networks, const ListOptions& options, Format format,
               const CellSurroundings& surroundings) {
    if (format == Format::CSV) return printCSV(networks, options.columns, surroundings, stdout);
    printTable(networks, options, surroundings);
}

void printColumnsHelp() {
    std::size_t widest = 0;
    for (const NetworkColumn& column : networkColumns()) {
        widest = std::max(widest, std::string_view(column.layout.name).size());
    }
    for (const NetworkColumn& column : networkColumns()) {
        if (column.meaning[0] == '\0') continue;
        std::string name = column.layout.name;
        name.resize(widest + 2, ' ');
        put(name + column.meaning + '\n');
    }
}

void printSummary(const std::vector<std::string>& lines, const ListOptions& options) {
    const Surroundings errors = surroundingsOf(stderr);
    const Theme theme(options.color, errors);
    for (const std::string& line : lines) {
        if (line.empty()) continue;
        const std::string text =
            brokenLine(line, errors.isTerminal ? errors.columns : std::nullopt);
        std::fprintf(stderr, "%s\n", theme.painted(text, Meaning::Secondary).c_str());
    }
}

}  // namespace halvane::tool
