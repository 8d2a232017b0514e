#include "tools/halvane/networks/one_network_screen.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <string_view>
#include <utility>

#include "halvane/ie/fancy_formatting.h"

#include "tools/halvane/networks/watch_foot.h"
#include "tools/halvane/output/cell_text.h"
#include "tools/halvane/output/shown_text.h"
#include "tools/halvane/output/signal_picture.h"

namespace halvane::tool {

namespace {

using Around = CellSurroundings;
using Time = WatchedSignal::Time;

constexpr std::size_t kLeastLinesWithPicture = 12;
constexpr std::size_t kLeastLinesWithBoth = 14;  // picture and foot
constexpr std::size_t kLinesAbove = 4;
constexpr std::size_t kMargin = 2 * kSignalLabelCells;
constexpr std::size_t kMostValues = 120;
constexpr std::size_t kLeastValues = 10;
constexpr std::string_view kGap = "  ";
constexpr Time kShown = std::chrono::seconds(60);
constexpr Time kRecent = std::chrono::seconds(4);

ShownText own(std::string_view text) {
    return ownText(text, {});
}

ShownText cell(const OneNetworkView& view, std::string_view column, const Around& around) {
    return networkColumnNamed(column, ListKind::Watch)->cell(*view.network, around).text;
}

// "channel 6/20"
ShownText channelText(const OneNetworkView& view, const Around& around) {
    ShownText text = own("channel ");
    text.append(cell(view, "channel", around));
    text.append(own("/"));
    text.append(cell(view, "width", around));
    text.dropTrailingBlanks();
    return text;
}

// What stands behind the name. The address counts most, the maker least.
std::vector<ShownText> partsThatFit(const OneNetworkView& view, std::size_t width,
                                    const Around& around) {
    constexpr std::size_t kLeastName = 12;
    std::vector<ShownText> parts = {own(FancyFormatting::formattedMAC(view.address.buffer()))};
    if (view.network != nullptr) {
        parts.push_back(channelText(view, around));
        parts.push_back(cell(view, "maker", around));
    }
    std::size_t used = kLeastName;
    std::size_t count = 0;
    for (; count < parts.size(); ++count) {
        used += kGap.size() + parts[count].cells();
        if (used > width) break;
    }
    parts.resize(count);
    if (count == 3) std::swap(parts[1], parts[2]);
    return parts;
}

// "Den speaker.o  FA:8F:CA:8E:5E:2F  (local)  channel 6/20"
std::string headLine(const OneNetworkView& view, const Around& around, const Theme& theme) {
    const auto parts = partsThatFit(view, view.width, around);
    Around nameAround = around;
    nameAround.hasAddress = !parts.empty();
    std::size_t room = view.width;
    std::string rest;
    for (const ShownText& part : parts) {
        room -= kGap.size() + part.cells();
        rest.append(kGap).append(theme.painted(part, Meaning::Plain));
    }
    const ShownText name = view.network != nullptr ? cell(view, "ssid", nameAround) : own("-");
    const ShownText mark = own(around.glyphs.cut);
    return theme.painted(cutInMiddle(name, room, mark), Meaning::Plain) + rest;
}

// "   -53 dBm   best -39  (last 60 s)"
std::string numberLine(const OneNetworkView& view, const Theme& theme) {
    constexpr std::string_view kIndent = "   ";
    if (view.signal == nullptr) {
        const std::string text = std::string(kIndent) + "not heard yet";
        return text.substr(0, view.width);
    }
    const auto signal = view.signal->held(view.now - kRecent, view.now);
    const auto best = view.signal->best(view.now);
    const std::string number = (signal ? std::to_string(*signal) : "  -") + " dBm";
    std::size_t room = view.width - std::min(view.width, kIndent.size() + number.size());
    std::string line(kIndent);
    line += theme.painted(number, signal ? meaningOfSignal(*signal) : Meaning::Plain);
    if (!best) return line;
    for (const std::string& part :
         {"   best " + std::to_string(*best), std::string("  (last 60 s)")}) {
        if (part.size() > room) break;
        room -= part.size();
        line += part;
    }
    return line;
}

// Each value has its part of the minute. The parts stand still while time goes on: the last one is
// the one that is now.
std::vector<std::optional<int>> valuesOf(const OneNetworkView& view, std::size_t count) {
    std::vector<std::optional<int>> values(count);
    if (view.signal == nullptr) return values;
    const auto parts = static_cast<Time::rep>(count);
    const Time part = (kShown + Time(parts - 1)) / parts;
    const Time end = (view.now + part - Time(1)) / part * part;
    for (std::size_t i = 0; i < count; ++i) {
        const Time until = end - part * static_cast<Time::rep>(count - 1 - i);
        values[i] = view.signal->held(until - part, std::min(until, view.now));
    }
    return values;
}

void addPicture(std::vector<std::string>& lines, const OneNetworkView& view, const Around& around) {
    if (view.width < kMargin + kLeastValues) return;
    const std::size_t count = std::min(view.width - kMargin, kMostValues);
    const std::size_t below = oneNetworkHasFoot(view.height) ? 3 : 1;  // the axis, and the foot
    const std::size_t room = view.height - kLinesAbove - below;
    const auto values = valuesOf(view, count);
    for (std::string& line :
         signalPicture(values, std::min(room, kMostSignalLines), around.glyphs)) {
        lines.push_back(std::move(line));
    }
    constexpr std::string_view kBegin = "60 s ago";
    constexpr std::string_view kEnd = "now";
    const std::string_view begin = count > kBegin.size() + kEnd.size() ? kBegin : "";
    std::string axis(kSignalLabelCells, ' ');
    axis.append(begin).append(count - begin.size() - kEnd.size(), ' ').append(kEnd);
    lines.push_back(std::move(axis));
}

}  // namespace

bool oneNetworkHasFoot(std::size_t height) {
    const bool hasPicture = height >= kLeastLinesWithPicture;
    return height >= (hasPicture ? kLeastLinesWithBoth : kLeastLinesWithFoot);
}

std::vector<std::string> oneNetworkScreen(const OneNetworkView& view,
                                          const CellSurroundings& surroundings,
                                          const Theme& theme) {
    std::vector<std::string> lines = {headLine(view, surroundings, theme), "",
                                      numberLine(view, theme)};
    if (view.height >= kLeastLinesWithPicture) {
        lines.emplace_back();
        addPicture(lines, view, surroundings);
        return lines;
    }
    // The number is what counts.
    if (view.height < 4) lines.erase(lines.begin(), lines.begin() + 2);
    lines.resize(std::min(lines.size(), view.height));
    return lines;
}

}  // namespace halvane::tool
