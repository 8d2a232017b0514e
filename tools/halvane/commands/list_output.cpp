#include "tools/halvane/commands/list_output.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>

#include "tools/halvane/input/maker_list.h"
#include "tools/halvane/networks/group_table.h"
#include "tools/halvane/networks/network_csv.h"
#include "tools/halvane/networks/network_filter.h"
#include "tools/halvane/networks/network_order.h"
#include "tools/halvane/networks/network_summary.h"
#include "tools/halvane/networks/network_table.h"
#include "tools/halvane/output/findings_list.h"
#include "tools/halvane/output/glyphs.h"
#include "tools/halvane/output/standard_output.h"
#include "tools/halvane/output/surroundings.h"
#include "tools/halvane/output/theme.h"

namespace halvane::tool {

namespace {

void printTable(std::span<const Network> networks, const ListOptions& options,
                const CellSurroundings& cells) {
    const Surroundings output = surroundingsOf(stdout);
    NetworkTableOptions table{
        .columns = options.columns,
        .added = options.findings ? networkColumnNamed("findings", cells.list) : nullptr,
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
            .captureEnds = ends,
            .list = options.list};
}

void printList(std::span<const Network> networks, const ListOptions& options, Format format,
               const CellSurroundings& surroundings) {
    if (format == Format::CSV) return printCSV(networks, options.columns, surroundings, stdout);
    printTable(networks, options, surroundings);
}

TextStyle listTextStyle(const ListOptions& options) {
    Surroundings surroundings = surroundingsOf(stdout);
    if (options.width) surroundings.columns = options.width;
    return textStyleFor(surroundings, options.color, options.text);
}

void printRecords(std::span<const Network> networks, RecordWriter& writer) {
    for (const Network& network : networks) {
        if (network.heard == nullptr) continue;
        if (std::ferror(stdout) != 0) break;
        writer.write(network.heard->sighting(), std::nullopt, network.statistics);
    }
    writer.finish();
}

void printFindings(std::span<const Network> networks, const ListOptions& options) {
    FindingsList findings;
    for (const Network& network : networks) {
        findings.addOne(network.profile, network.statistics->signal.median());
    }
    put(findings.text(*options.findings, listTextStyle(options)));
}

std::optional<std::string_view> listedMaker(const MacAddress& address) {
    if (address.isLocal() || address.isGroup()) return std::nullopt;
    return MakerList::ofSystem().find(address);
}

bool isList(Format format) {
    return format == Format::Table || format == Format::CSV;
}

std::span<Network> listed(std::vector<Network>& all, const ListOptions& options, Format format,
                          const CellSurroundings& surroundings) {
    const auto rest = std::stable_partition(all.begin(), all.end(), [&](const Network& network) {
        return options.filter.passes(network);
    });
    const std::span<Network> networks(all.begin(), rest);
    NetworkOrder order = options.order;
    if (!isList(format) && !options.isSorted) order.keys.clear();
    sortNetworks(networks, order, surroundings);
    return networks;
}

std::vector<std::string> summaryOfNetworks(const Survey& survey, const ListOptions& options,
                                           std::span<const Network> all,
                                           std::span<const Network> shown) {
    const NetworkFilter& filter = options.filter;
    if (!filter.isEmpty() && shown.empty() && !all.empty()) return emptyFilterLines(filter, all);
    NetworkCounts counts{.networks = shown,
                         .grouping = options.grouping,
                         .letGo = survey.letGoCount(),
                         .most = survey.most()};
    if (!filter.isEmpty()) counts.all = all.size();
    return {networksLine(counts), findingsLine(shown, options.findings)};
}

void printColumnsHelp(ListKind list) {
    std::size_t widest = 0;
    for (const NetworkColumn& column : networkColumns(list)) {
        widest = std::max(widest, std::string_view(column.layout.name).size());
    }
    for (const NetworkColumn& column : networkColumns(list)) {
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
