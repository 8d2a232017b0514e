#include "tools/halvane/commands/watch_display.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <poll.h>
#include <string_view>
#include <unistd.h>
#include <utility>

#include "tools/halvane/commands/list_output.h"
#include "tools/halvane/networks/network_columns.h"
#include "tools/halvane/networks/network_order.h"
#include "tools/halvane/networks/one_network_screen.h"
#include "tools/halvane/networks/watch_foot.h"
#include "tools/halvane/networks/watch_keys_screen.h"
#include "tools/halvane/options/watch_filter.h"
#include "tools/halvane/output/surroundings.h"

namespace halvane::tool {

namespace {

// What follows an Escape within this time belongs to it. A terminal sends a key at once, but the
// way from there may be long and part it.
constexpr std::chrono::milliseconds kEscapeTime{50};

// The address, if the options ask for one alone.
std::optional<MacAddress> onlyAddress(const ListOptions& options) {
    for (const auto& share : options.filter.sharesOf({})) {
        if (share.option == "--bssid" && share.values.size() == 1) return options.bssid;
    }
    return std::nullopt;
}

WatchChoices firstChoices(const ListOptions& options) {
    WatchChoices choices{.grouping = options.grouping, .order = options.order};
    choices.chosen = onlyAddress(options);
    if (choices.chosen) choices.page = WatchPage::OneNetwork;
    return choices;
}

bool hasFoot(const WatchView& view) {
    if (view.choices.page == WatchPage::OneNetwork) return oneNetworkHasFoot(view.height);
    return view.height >= kLeastLinesWithFoot;
}

}  // namespace

WatchDisplay::WatchDisplay(const WatchOptions& options, WatchList& list, int keyboard)
    : options_(options),
      list_(list),
      keyboard_(keyboard),
      screen_(STDOUT_FILENO, keyboard),
      choices_(firstChoices(options.list)) {
    list_.sortBy(choices_.order);
}

bool WatchDisplay::readKeys(Clock::time_point now) {
    pollfd keys = {keyboard_, POLLIN, 0};
    if (keyboard_ < 0 || ::poll(&keys, 1, 0) != 1) return false;
    std::array<char, 256> typed{};
    const ssize_t count = ::read(keyboard_, typed.data(), typed.size());
    if (count < 0 && (errno == EINTR || errno == EAGAIN)) return false;
    if (count <= 0) {  // the terminal is gone
        choices_.isEnded = true;
        return true;
    }
    press(decoder_.take({typed.data(), static_cast<std::size_t>(count)}));
    due_.reset();
    if (decoder_.isWaiting()) due_ = now + kEscapeTime;
    return true;
}

void WatchDisplay::takeDue() {
    due_.reset();
    press(decoder_.giveUp());
}

void WatchDisplay::press(const std::vector<Key>& keys) {
    for (const Key key : keys) {
        const NetworkOrder before = choices_.order;
        choices_ = pressed(std::move(choices_), key,
                           {.rows = rows_, .page = page_, .columns = sortColumns_});
        if (!(choices_.order == before)) list_.sortBy(choices_.order);
        if (choices_.isEnded) return;
    }
}

ListOptions WatchDisplay::chosenOptions() const {
    ListOptions options = options_.list;
    options.filter = watchFilter(options_.list.filter, choices_);
    options.grouping = choices_.grouping;
    options.order = choices_.order;
    return options;
}

void WatchDisplay::advance(WatchList::Time time) {
    list_.freeze(choices_.holdRows());
    list_.advance(time);
}

void WatchDisplay::draw(const WatchStatus& status, WatchList::Time time) {
    screen_.show(lines(status, time));
}

std::vector<std::string> WatchDisplay::lines(const WatchStatus& status, WatchList::Time time) {
    const Surroundings output = surroundingsOf(stdout);
    const Theme theme(options_.list.color, output);
    const auto networks = list_.rows(watchFilter(options_.list.filter, choices_));
    const std::size_t all = networks.empty() ? list_.rows({}).size() : networks.size();
    rows_ = watchRows(networks, choices_.grouping);
    forgetLostRow();
    const WatchView view{.rows = networks,
                         .all = all,
                         .columns = options_.list.columns,
                         .choices = choices_,
                         .width = options_.list.width.value_or(output.columns.value_or(80)),
                         .height = output.lines.value_or(24)};
    sortColumns_ = sortColumns(view.columns, view.width);
    if (choices_.page == WatchPage::List) return listLines(view, status, theme);
    return pageLines(view, status, time, theme);
}

// A row that has left, or passes no longer, is not chosen. A network that has a page of its own may
// come back.
void WatchDisplay::forgetLostRow() {
    if (!choices_.chosen || choices_.page != WatchPage::List) return;
    if (std::ranges::count(rows_, *choices_.chosen) == 0) choices_.chosen.reset();
}

std::vector<std::string> WatchDisplay::listLines(WatchView view, const WatchStatus& status,
                                                 const Theme& theme) {
    const auto chosen = choices_.chosen ? std::ranges::find(rows_, *choices_.chosen) : rows_.end();
    std::optional<std::size_t> row;
    if (chosen != rows_.end()) row = static_cast<std::size_t>(chosen - rows_.begin());
    page_ = std::max<std::size_t>(watchLayout(view, rows_.size()).page, 1);
    first_ = firstRow(first_, row, rows_.size(), page_);
    view.first = first_;
    return watchScreen(view, status, cellSurroundings(options_.list, {}), theme);
}

std::vector<std::string> WatchDisplay::pageLines(const WatchView& view, const WatchStatus& status,
                                                 WatchList::Time time, const Theme& theme) const {
    const CellSurroundings surroundings = cellSurroundings(options_.list, {});
    std::vector<std::string> lines;
    if (choices_.page == WatchPage::Keys) {
        lines = watchKeysScreen(view.width, view.height, theme);
    } else {
        const auto network = std::ranges::find(view.rows, *choices_.chosen, &Network::bssid);
        lines = oneNetworkScreen({.address = *choices_.chosen,
                                  .network = network == view.rows.end() ? nullptr : &*network,
                                  .signal = list_.signalOf(*choices_.chosen),
                                  .now = time,
                                  .width = view.width,
                                  .height = view.height},
                                 surroundings, theme);
    }
    lines.resize(view.height);
    if (hasFoot(view)) {
        lines.back() = watchFoot(choices_, status.message, view.width, surroundings, theme);
    }
    return lines;
}

}  // namespace halvane::tool
