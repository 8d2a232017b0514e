#include "tools/halvane/networks/group_table.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "halvane/air/channel.h"
#include "halvane/air/security.h"
#include "halvane/ie/fancy_formatting.h"

#include "tools/halvane/networks/security_label.h"
#include "tools/halvane/output/cell_text.h"
#include "tools/halvane/output/fitted_table.h"
#include "tools/halvane/output/network_name.h"
#include "tools/halvane/output/shown_text.h"
#include "tools/halvane/output/signal_bar.h"
#include "tools/halvane/output/standard_output.h"
#include "tools/halvane/output/text_table.h"

namespace halvane::tool {

namespace {

using Around = CellSurroundings;

constexpr std::string_view kUntold = "-";
constexpr std::size_t kRoomyWidth = 100;

FittedCell own(std::string_view text, Meaning meaning = Meaning::Plain) {
    return {ownText(text, {}), meaning};
}

struct GroupColumn {
    FittedColumn layout;
    // `cells` are those of the column at most; kAnyWidth without an end.
    FittedCell (*cell)(const NetworkGroup& group, const Around& around, std::size_t cells);
};

FittedCell markCell(const NetworkGroup&, const Around&, std::size_t) {
    return own("");
}

FittedCell nameCell(const NetworkGroup& group, const Around& around, std::size_t) {
    const Network& first = *group.front();
    // One row of several has no length of their names.
    const bool isHiddenName = first.profile.ssid && isHidden(first);
    return {isHiddenName ? shownName({}, around.rules) : networkName(first, around.rules)};
}

FittedCell signalCell(const NetworkGroup& group, const Around&, std::size_t) {
    const auto signal = signalOf(group);
    return signal ? own(std::to_string(*signal), meaningOfSignal(*signal)) : own(kUntold);
}

FittedCell barCell(const NetworkGroup& group, const Around& around, std::size_t) {
    const auto signal = signalOf(group);
    if (!signal) return own("");
    return {ownText(signalBar(*signal, around.glyphs), around.rules), meaningOfBar(*signal)};
}

FittedCell countCell(const NetworkGroup& group, const Around&, std::size_t) {
    return own(std::to_string(group.size()));
}

FittedCell accessPointsCell(const NetworkGroup& group, const Around&, std::size_t) {
    return own(std::to_string(accessPointCount(group)));
}

// As many numbers as fit, then the sign that more would follow.
template <air::Band band>
FittedCell channelsCell(const NetworkGroup& group, const Around& around, std::size_t cells) {
    const auto channels = channelsOf(group, band);
    if (channels.empty()) return own(kUntold);
    std::string text;
    for (std::size_t i = 0; i < channels.size(); ++i) {
        const std::string next = (text.empty() ? "" : " ") + std::to_string(channels[i]);
        const std::size_t after = i + 1 < channels.size() ? 2 : 0;  // a blank and the sign
        if (cells != kAnyWidth && text.size() + next.size() + after > cells) {
            return {ownText(text + ' ' + around.glyphs.cut, around.rules)};
        }
        text += next;
    }
    return own(text);
}

FittedCell securityCell(const NetworkGroup& group, const Around&, std::size_t) {
    std::vector<air::Security> kinds;
    for (const Network* const network : group) {
        const air::Security security = network->profile.security.name.value;
        if (std::ranges::count(kinds, security) == 0) kinds.push_back(security);
    }
    if (kinds.size() == 1) return own(shortSecurityName(kinds[0]), meaningOfSecurity(kinds[0]));
    std::string text = "differs: ";
    for (const air::Security kind : kinds) {
        if (kind != kinds.front()) text += ", ";
        text += shortSecurityName(kind);
    }
    return own(text, Meaning::Danger);
}

FittedCell radioCell(const NetworkGroup& group, const Around& around, std::size_t) {
    const Network& first = *group.front();
    const std::string& name = first.details.accessPoint;
    if (!name.empty()) return {shownText(name, around.rules)};
    return own(FancyFormatting::formattedMAC(first.bssid.buffer()).substr(9));
}

// The cell that the first network has in the list of networks.
template <const auto& name>
FittedCell sameCell(const NetworkGroup& group, const Around& around, std::size_t) {
    return networkColumnNamed(name)->cell(*group.front(), around);
}

FittedCell namesCell(const NetworkGroup& group, const Around& around, std::size_t) {
    ShownText names;
    for (const Network* const network : group) {
        if (network != group.front()) names.append(", ");
        names.append(networkName(*network, around.rules));
    }
    return {names};
}

constexpr char kBand[] = "band";
constexpr char kChannel[] = "channel";
constexpr char kWidth[] = "width";
constexpr char kGeneration[] = "generation";
constexpr char kLoad[] = "load";
constexpr char kStations[] = "stations";

constexpr GroupColumn kMark = {
    {.name = "mark", .header = "", .align = Align::Left, .least = 1, .most = 1}, markCell};
constexpr GroupColumn kSignal = {
    {.name = "signal", .header = "dBm", .align = Align::Right, .least = 3, .most = kAnyWidth},
    signalCell};
constexpr GroupColumn kBar = {
    {.name = "bar", .header = "", .align = Align::Left, .least = 4, .most = 4, .from = 55},
    barCell};

constexpr FittedColumn channelsColumn(const char* name, const char* header, std::size_t cells,
                                      std::size_t from, std::size_t below, bool isOptional) {
    return {.name = name,
            .header = header,
            .align = Align::Left,
            .least = 5,
            .most = cells,
            .from = from,
            .below = below,
            .isLeftOutUntold = isOptional};
}

constexpr GroupColumn kNameColumns[] = {
    kMark,
    {{.name = "name", .header = "SSID", .align = Align::Left, .least = 12, .most = 32}, nameCell},
    kSignal,
    kBar,
    {{.name = "bss", .header = "BSS", .align = Align::Right, .least = 3, .most = kAnyWidth},
     countCell},
    {{.name = "ap", .header = "AP", .align = Align::Right, .least = 3, .most = kAnyWidth},
     accessPointsCell},
    {channelsColumn("2.4", "2.4 GHz", 7, 60, kRoomyWidth, false), channelsCell<air::Band::Ghz2>},
    {channelsColumn("2.4", "2.4 GHz", 15, kRoomyWidth, kAnyWidth, false),
     channelsCell<air::Band::Ghz2>},
    {channelsColumn("5", "5 GHz", 20, 76, kRoomyWidth, false), channelsCell<air::Band::Ghz5>},
    {channelsColumn("5", "5 GHz", 34, kRoomyWidth, kAnyWidth, false),
     channelsCell<air::Band::Ghz5>},
    {channelsColumn("6", "6 GHz", 8, 76, kRoomyWidth, true), channelsCell<air::Band::Ghz6>},
    {channelsColumn("6", "6 GHz", 16, kRoomyWidth, kAnyWidth, true), channelsCell<air::Band::Ghz6>},
    {{.name = "security",
      .header = "SECURITY",
      .align = Align::Left,
      .least = 8,
      .most = kAnyWidth},
     securityCell},
};

constexpr GroupColumn kRadioColumns[] = {
    kMark,
    {{.name = "radio", .header = "RADIO", .align = Align::Left, .least = 13, .most = 32},
     radioCell},
    kSignal,
    kBar,
    {{.name = kBand, .header = "GHz", .align = Align::Right, .least = 3, .most = kAnyWidth},
     sameCell<kBand>},
    {{.name = kChannel, .header = "CH", .align = Align::Right, .least = 3, .most = kAnyWidth},
     sameCell<kChannel>},
    {{.name = kWidth, .header = "MHz", .align = Align::Right, .least = 4, .most = 4, .from = 40},
     sameCell<kWidth>},
    {{.name = kGeneration,
      .header = "GEN",
      .align = Align::Left,
      .least = 3,
      .most = 3,
      .from = 59},
     sameCell<kGeneration>},
    {{.name = kLoad,
      .header = "LOAD",
      .align = Align::Right,
      .least = 4,
      .most = kAnyWidth,
      .from = 66,
      .isLeftOutUntold = true},
     sameCell<kLoad>},
    {{.name = kStations,
      .header = "STA",
      .align = Align::Right,
      .least = 3,
      .most = kAnyWidth,
      .from = 66,
      .isLeftOutUntold = true},
     sameCell<kStations>},
    {{.name = "names", .header = "NAMES", .align = Align::Left, .least = 8, .most = kAnyWidth},
     namesCell},
};

constexpr Squeeze kSqueezes[] = {
    {.column = "names", .least = 12},           {.column = "name", .least = 12},
    {.column = "security", .least = 10},        {.column = "radio", .least = 8},
    {.column = "name", .least = 4, .from = 40}, {.column = "names", .least = 8, .from = 40},
};

std::vector<FittedColumn> layoutsOf(std::span<const GroupColumn> columns) {
    std::vector<FittedColumn> layouts;
    for (const GroupColumn& column : columns) layouts.push_back(column.layout);
    return layouts;
}

std::span<const GroupColumn> columnsOf(Grouping grouping) {
    if (grouping == Grouping::Radio) return kRadioColumns;
    return kNameColumns;
}

// Lays the table out line by line.
class Drawing {
  public:
    Drawing(const GroupTableOptions& options, const Around& around, const Theme& theme)
        : columns_(columnsOf(options.grouping)),
          options_(options),
          around_(around),
          theme_(theme),
          layouts_(layoutsOf(columns_)),
          table_({layouts_, kSqueezes}, options.width) {}

    template <typename Put>
    void draw(std::span<const NetworkGroup> groups, Put putLine) {
        for (const NetworkGroup& group : groups) table_.fit(rowOf(group));
        table_.settle();
        putLine(table_.header(theme_));
        const ShownText mark = ownText(around_.glyphs.cut, around_.rules);
        for (const NetworkGroup& group : groups) {
            putLine(table_.line(rowOf(group), theme_, mark));
            if (!options_.areAddressesShown) continue;
            for (const Network* const network : group) putLine(addressLine(*network));
        }
    }

  private:
    std::vector<FittedCell> rowOf(const NetworkGroup& group) const {
        std::vector<FittedCell> row;
        for (const std::size_t index : table_.standing()) {
            const GroupColumn& column = columns_[index];
            const std::size_t cells = options_.width ? column.layout.most : kAnyWidth;
            row.push_back(column.cell(group, around_, cells));
        }
        return row;
    }

    static std::string addressLine(const Network& network) {
        const auto signal = signalOf(network);
        return "    " + FancyFormatting::formattedMAC(network.bssid.buffer()) + "  " +
               (signal ? std::to_string(*signal) + " dBm" : std::string(kUntold)) + '\n';
    }

    std::span<const GroupColumn> columns_;
    const GroupTableOptions& options_;
    const Around& around_;
    const Theme& theme_;
    const std::vector<FittedColumn> layouts_;
    FittedTable table_;
};

}  // namespace

std::vector<NetworkGroup> groupsOf(std::span<const Network> networks, Grouping grouping) {
    return grouping == Grouping::Radio ? groupsByRadio(networks) : groupsByName(networks);
}

std::vector<std::string> groupLines(std::span<const NetworkGroup> groups,
                                    const GroupTableOptions& options,
                                    const CellSurroundings& surroundings, const Theme& theme) {
    GroupTableOptions plain = options;
    plain.areAddressesShown = false;
    std::vector<std::string> lines;
    Drawing(plain, surroundings, theme).draw(groups, [&lines](std::string line) {
        lines.push_back(std::move(line));
    });
    return lines;
}

void printGroups(std::span<const Network> networks, const GroupTableOptions& options,
                 const CellSurroundings& surroundings, const Theme& theme, std::FILE* stream) {
    if (networks.empty()) return;
    const auto groups = groupsOf(networks, options.grouping);
    const std::size_t count =
        options.limit == 0 ? groups.size() : std::min(options.limit, groups.size());
    Drawing(options, surroundings, theme)
        .draw(std::span(groups).first(count),
              [stream](const std::string& line) { put(line, stream); });
    if (count == groups.size()) return;
    put(std::string(surroundings.glyphs.cut) + ' ' + std::to_string(groups.size() - count) +
            " more (--limit=0 shows all)\n",
        stream);
}

}  // namespace halvane::tool
