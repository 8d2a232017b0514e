#include "tools/halvane/networks/watch_screen.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

#include "tools/halvane/networks/network_table.h"

namespace halvane::tool {

namespace {

constexpr std::size_t kLeastLinesWithHead = 10;
constexpr std::size_t kLeastLinesWithFoot = 5;
constexpr std::size_t kLeastWidthWithHead = 40;
constexpr std::size_t kRoomyWidth = 100;

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

std::string footLine(const WatchStatus& status, std::size_t width) {
    if (!status.message.empty()) return ' ' + status.message.substr(0, width - 1);
    const std::string gap = width >= kRoomyWidth ? "   " : "  ";
    return " q quit" + gap + (status.isFrozen ? "f go on" : "f freeze");
}

}  // namespace

std::vector<std::string> watchScreen(const WatchView& view, const WatchStatus& status,
                                     const CellSurroundings& surroundings, const Theme& theme) {
    const bool hasFoot = view.height >= kLeastLinesWithFoot;
    const bool hasHead = view.height >= kLeastLinesWithHead && view.width >= kLeastWidthWithHead;
    std::vector<std::string> lines;
    if (hasHead) lines.push_back(headLine(status, view.width, theme));

    const std::size_t last = view.height - (hasFoot ? 1 : 0);  // the end of the table
    std::size_t room = last - std::min(last, lines.size() + 1);
    const bool isCut = view.rows.size() > room;
    if (isCut) room -= std::min<std::size_t>(room, 1);
    const std::size_t shown = std::min(room, view.rows.size());
    for (std::string& line :
         networkLines(view.rows.first(shown), {.columns = view.columns, .width = view.width},
                      surroundings, theme)) {
        line.pop_back();
        lines.push_back(std::move(line));
    }
    if (isCut) {
        lines.push_back(std::string(surroundings.glyphs.cut) + ' ' +
                        std::to_string(view.rows.size() - shown) + " more");
    }
    lines.resize(last);
    if (hasFoot) lines.push_back(footLine(status, view.width));
    return lines;
}

}  // namespace halvane::tool
