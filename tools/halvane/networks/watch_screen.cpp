#include "tools/halvane/networks/watch_screen.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>
#include <utility>

#include "halvane/base/utf8_internal.h"

#include "tools/halvane/networks/network_groups.h"
#include "tools/halvane/networks/network_table.h"
#include "tools/halvane/networks/watch_foot.h"
#include "tools/halvane/output/glyphs.h"
#include "tools/halvane/output/shown_text.h"
#include "tools/halvane/output/unicode.h"

namespace halvane::tool {

namespace {

constexpr std::size_t kLeastLinesWithHead = 10;
constexpr std::size_t kLeastWidthWithHead = 40;

// "01:06", "1:01:06".
std::string clockText(std::chrono::seconds elapsed) {
    const auto seconds = elapsed.count();
    std::array<char, 48> text{};
    if (seconds < 3600) {
        std::snprintf(text.data(), text.size(), "%02lld:%02lld",
                      static_cast<long long>(seconds / 60), static_cast<long long>(seconds % 60));
    } else {
        std::snprintf(
            text.data(), text.size(), "%lld:%02lld:%02lld", static_cast<long long>(seconds / 3600),
            static_cast<long long>(seconds / 60 % 60), static_cast<long long>(seconds % 60));
    }
    return text.data();
}

std::string countsText(const WatchList::Counts& counts) {
    std::string text = std::to_string(counts.networks);
    text += counts.networks == 1 ? " network" : " networks";
    if (counts.isNew > 0) text += ", " + std::to_string(counts.isNew) + " new";
    if (counts.lost > 0) text += ", " + std::to_string(counts.lost) + " lost";
    return text;
}

// Both ends of a line of that width.
std::string spread(const std::string& left, const std::string& right, std::size_t width) {
    const std::size_t used = left.size() + right.size();
    return left + std::string(width > used ? width - used : 1, ' ') + right;
}

std::string headLine(const WatchStatus& status, std::size_t width, const Theme& theme) {
    const std::string counts = countsText(status.counts);
    const std::string clock = clockText(status.elapsed);
    std::string left = status.interfaces;
    if (status.channel) left += "  channel " + std::to_string(*status.channel);
    const std::string before = counts + "  " + std::to_string(status.frames) + " frames  ";
    const std::string dropped = std::to_string(status.dropped) + " dropped";
    const std::string right = before + dropped + "  " + clock;
    if (left.size() + 2 + right.size() > width) return spread(counts, clock, width);
    std::string line = spread(left, right, width);
    if (status.dropped == 0) return line;
    const std::size_t at = line.size() - clock.size() - 2 - dropped.size();
    return line.replace(at, dropped.size(), theme.painted(dropped, Meaning::Caution));
}

// Puts a sign into a cell of a line, which is blank there. Colours take no cells.
std::string withSignAt(const std::string& line, std::size_t cell, const std::string& sign) {
    std::size_t at = 0;
    for (std::size_t cells = 0; at < line.size(); ++at) {
        if (line[at] == '\x1B') {
            at = line.find('m', at);
            if (at == std::string::npos) return line;
        } else if (cells++ == cell) {
            break;
        }
    }
    return at < line.size() ? std::string(line).replace(at, 1, sign) : line;
}

// A character of a line, or a sequence of a colour.
struct Piece {
    std::size_t size;
    std::size_t cells;
};

Piece firstPiece(std::string_view line, const TextRules& rules) {
    if (line.front() == '\x1B') {
        const std::size_t end = line.find_first_of("mG");
        return {end == std::string_view::npos ? line.size() : end + 1, 0};
    }
    const auto character = firstUtf8Character(line);
    if (!character) return {1, 1};
    return {character->size, cellsOf(character->codePoint, rules.ambiguous)};
}

std::size_t cellsOfLine(std::string_view line, const TextRules& rules) {
    std::size_t cells = 0;
    while (!line.empty()) {
        const Piece piece = firstPiece(line, rules);
        cells += piece.cells;
        line.remove_prefix(piece.size);
    }
    return cells;
}

// A line that is too wide gets a mark at its end. The sequences behind it stay: one may end a
// colour.
std::string cutLine(const std::string& line, std::size_t width, const CellSurroundings& around) {
    if (cellsOfLine(line, around.rules) <= width) return line;
    std::string kept;
    std::size_t cells = 0;
    bool isCut = false;
    for (std::string_view rest = line; !rest.empty();) {
        const Piece piece = firstPiece(rest, around.rules);
        const bool fits = piece.cells == 0 || cells + piece.cells < width;
        if (!fits && !isCut) kept += around.glyphs.cut;
        isCut = isCut || !fits;
        if (!isCut || rest.front() == '\x1B') kept += rest.substr(0, piece.size);
        if (!isCut) cells += piece.cells;
        rest.remove_prefix(piece.size);
    }
    return kept;
}

// The header and the rows of the screen, from `first` on.
class TableLines {
  public:
    TableLines(const WatchView& view, const CellSurroundings& surroundings, const Theme& theme)
        : view_(view), surroundings_(surroundings), theme_(theme), rows_(view.rows) {
        if (grouping() != Grouping::None) groups_ = groupsOf(view.rows, grouping());
    }

    std::size_t count() const {
        return grouping() == Grouping::None ? rows_.size() : groups_.size();
    }

    std::vector<std::string> lines(std::size_t first, std::size_t count) const {
        std::vector<std::string> lines = grouping() == Grouping::None
                                             ? linesOfNetworks(first, count)
                                             : linesOfGroups(first, count);
        for (std::string& line : lines) {
            line.pop_back();
            line = cutLine(line, view_.width, surroundings_);
        }
        const auto chosen = chosenRow();
        if (chosen && *chosen >= first && *chosen < first + count) {
            std::string& line = lines[*chosen - first + 1];
            line = withSignAt(line, markCell(), theme_.painted(">", Meaning::Header));
        }
        return lines;
    }

  private:
    Grouping grouping() const { return view_.choices.grouping; }

    // Columns of the user's choice have no blank cell for the mark of the chosen row.
    bool hasMargin() const { return grouping() == Grouping::None && !view_.columns.empty(); }

    // The gap behind the columns of signs, which stand at every width.
    std::size_t markCell() const {
        if (grouping() != Grouping::None) return 1;
        return hasMargin() ? 0 : 2;
    }

    std::vector<std::string> linesOfNetworks(std::size_t first, std::size_t count) const {
        const std::size_t margin = hasMargin() ? std::min<std::size_t>(view_.width - 1, 2) : 0;
        auto lines = networkLines(rows_.subspan(first, count),
                                  {.columns = view_.columns, .width = view_.width - margin},
                                  surroundings_, theme_);
        for (std::string& line : lines) line.insert(0, margin, ' ');
        return lines;
    }

    std::vector<std::string> linesOfGroups(std::size_t first, std::size_t count) const {
        return groupLines(std::span(groups_).subspan(first, count),
                          {.grouping = grouping(), .width = view_.width}, surroundings_, theme_);
    }

    std::optional<std::size_t> chosenRow() const {
        if (!view_.choices.chosen) return std::nullopt;
        const auto rows = watchRows(view_.rows, grouping());
        const auto found = std::ranges::find(rows, *view_.choices.chosen);
        if (found == rows.end()) return std::nullopt;
        return static_cast<std::size_t>(found - rows.begin());
    }

    const WatchView& view_;
    const CellSurroundings& surroundings_;
    const Theme& theme_;
    std::span<const Network> rows_;
    std::vector<NetworkGroup> groups_;
};

std::string moreLine(std::size_t count, std::size_t width, const Glyphs& glyphs) {
    const std::string number = ' ' + std::to_string(count) + " more";
    constexpr std::string_view kHow = ": wheel or arrow keys";
    std::string line = glyphs.cut + number;
    if (1 + number.size() + kHow.size() <= width) line += kHow;
    return line;
}

std::string nothingPasses(std::size_t all, std::size_t width) {
    const std::string line = "   no network of " + std::to_string(all) + " passes the filter";
    return line.substr(0, width);
}

}  // namespace

std::vector<MacAddress> watchRows(std::span<const Network> networks, Grouping grouping) {
    std::vector<MacAddress> rows;
    if (grouping == Grouping::None) {
        for (const Network& network : networks) rows.push_back(network.bssid);
    } else {
        for (const NetworkGroup& group : groupsOf(networks, grouping)) {
            rows.push_back(group.front()->bssid);
        }
    }
    return rows;
}

WatchLayout watchLayout(const WatchView& view, std::size_t rows) {
    WatchLayout layout;
    const std::size_t leastWithFoot = view.choices.isTyping ? 2 : kLeastLinesWithFoot;
    layout.hasFoot = view.height >= leastWithFoot;
    layout.hasHead = view.height >= kLeastLinesWithHead && view.width >= kLeastWidthWithHead;
    const std::size_t others = 1 + (layout.hasFoot ? 1 : 0) + (layout.hasHead ? 1 : 0);
    const std::size_t room = view.height - std::min(view.height, others);
    layout.isCut = rows > room;
    layout.page = layout.isCut ? room - std::min<std::size_t>(room, 1) : rows;
    return layout;
}

std::vector<std::string> watchScreen(const WatchView& view, const WatchStatus& status,
                                     const CellSurroundings& surroundings, const Theme& theme) {
    const TableLines table(view, surroundings, theme);
    const WatchLayout layout = watchLayout(view, table.count());
    const std::size_t first = std::min(view.first, table.count() - layout.page);
    std::vector<std::string> lines;
    if (layout.hasHead) lines.push_back(headLine(status, view.width, theme));
    for (std::string& line : table.lines(first, layout.page)) lines.push_back(std::move(line));
    if (layout.isCut) {
        lines.push_back(moreLine(table.count() - layout.page, view.width, surroundings.glyphs));
    } else if (table.count() == 0 && view.all > 0) {
        lines.push_back(nothingPasses(view.all, view.width));
    }
    lines.resize(view.height - (layout.hasFoot ? 1 : 0));
    if (layout.hasFoot) {
        lines.push_back(watchFoot(view.choices, status.message, view.width, surroundings, theme));
    }
    return lines;
}

}  // namespace halvane::tool
