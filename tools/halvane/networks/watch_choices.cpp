#include "tools/halvane/networks/watch_choices.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "halvane/base/utf8_internal.h"

namespace halvane::tool {

namespace {

constexpr std::size_t kLongestFilter = 255;  // characters

void quit(WatchChoices& choices, const WatchScene&) {
    choices.isEnded = true;
}

void typeFilter(WatchChoices& choices, const WatchScene&) {
    choices.isTyping = true;
}

// The next of all columns, `step` further on.
void sortBeside(WatchChoices& choices, const WatchScene& scene, std::size_t step) {
    const auto& columns = scene.columns;
    if (columns.empty()) return;
    const NetworkColumn* const column =
        choices.order.keys.empty() ? nullptr : choices.order.keys.front().column;
    const auto known = std::ranges::find_if(columns, [&](const NetworkColumn* other) {
        return column != nullptr &&
               std::string_view(other->layout.name) == std::string_view(column->layout.name);
    });
    const auto index = static_cast<std::size_t>(known - columns.begin());
    const std::size_t next = known == columns.end() ? 0 : (index + step) % columns.size();
    const bool isSignal = std::string_view(columns[next]->layout.name) == "signal";
    choices.order.keys = {{columns[next], isSignal}};
}

void sortByNext(WatchChoices& choices, const WatchScene& scene) {
    sortBeside(choices, scene, 1);
}

void sortByPrevious(WatchChoices& choices, const WatchScene& scene) {
    sortBeside(choices, scene, scene.columns.size() - 1);
}

void reverse(WatchChoices& choices, const WatchScene&) {
    choices.order.isReversed = !choices.order.isReversed;
}

// The value after `now` in a circle.
template <typename Value, std::size_t count>
Value after(const Value& now, const Value (&circle)[count]) {
    const auto* const found = std::ranges::find(circle, now);
    const auto index = static_cast<std::size_t>(found - std::begin(circle));
    return circle[(index + 1) % count];
}

void nextBand(WatchChoices& choices, const WatchScene&) {
    constexpr std::optional<air::Band> kBands[] = {std::nullopt, air::Band::Ghz2, air::Band::Ghz5,
                                                   air::Band::Ghz6};
    choices.band = after(choices.band, kBands);
}

void nextGrouping(WatchChoices& choices, const WatchScene&) {
    constexpr Grouping kGroupings[] = {Grouping::None, Grouping::Name, Grouping::Radio};
    choices.grouping = after(choices.grouping, kGroupings);
    choices.chosen.reset();  // it may stand for other networks now
}

void freeze(WatchChoices& choices, const WatchScene&) {
    choices.isFrozen = !choices.isFrozen;
}

void showKeys(WatchChoices& choices, const WatchScene&) {
    choices.behindKeys = choices.page;
    choices.page = WatchPage::Keys;
}

// The index of the chosen row; absent without one, or if it has left.
std::optional<std::size_t> chosenRow(const WatchChoices& choices, const WatchScene& scene) {
    if (!choices.chosen) return std::nullopt;
    const auto found = std::ranges::find(scene.rows, *choices.chosen);
    if (found == scene.rows.end()) return std::nullopt;
    return static_cast<std::size_t>(found - scene.rows.begin());
}

void choose(WatchChoices& choices, const WatchScene& scene, std::size_t row) {
    if (scene.rows.empty()) return;
    choices.chosen = scene.rows[std::min(row, scene.rows.size() - 1)];
}

// Without a chosen row, the first one is.
void chooseBelow(WatchChoices& choices, const WatchScene& scene, std::size_t step) {
    const auto row = chosenRow(choices, scene);
    choose(choices, scene, row ? *row + step : 0);
}

// Without a chosen row, the last one that is seen is.
void chooseAbove(WatchChoices& choices, const WatchScene& scene, std::size_t step) {
    const std::size_t row = chosenRow(choices, scene).value_or(scene.page);
    choose(choices, scene, row - std::min(row, step));
}

void chooseNext(WatchChoices& choices, const WatchScene& scene) {
    chooseBelow(choices, scene, 1);
}

void choosePrevious(WatchChoices& choices, const WatchScene& scene) {
    chooseAbove(choices, scene, 1);
}

void choosePageDown(WatchChoices& choices, const WatchScene& scene) {
    chooseBelow(choices, scene, scene.page);
}

void choosePageUp(WatchChoices& choices, const WatchScene& scene) {
    chooseAbove(choices, scene, scene.page);
}

void chooseFirst(WatchChoices& choices, const WatchScene& scene) {
    choose(choices, scene, 0);
}

void chooseLast(WatchChoices& choices, const WatchScene& scene) {
    choose(choices, scene, scene.rows.size());
}

// Without a chosen row, the first one is.
void showOneNetwork(WatchChoices& choices, const WatchScene& scene) {
    if (!chosenRow(choices, scene)) choose(choices, scene, 0);
    if (choices.chosen) choices.page = WatchPage::OneNetwork;
}

// What was done last is undone first: the chosen row, then the filter.
void stepBack(WatchChoices& choices, const WatchScene&) {
    if (choices.chosen) {
        choices.chosen.reset();
    } else {
        choices.filter.clear();
    }
}

void showList(WatchChoices& choices, const WatchScene&) {
    choices.page = WatchPage::List;
}

struct Binding {
    Key key;
    void (*act)(WatchChoices& choices, const WatchScene& scene);
};

constexpr Binding kListKeys[] = {
    {U'q', quit},
    {U'/', typeFilter},
    {U's', sortByNext},
    {U'S', sortByPrevious},
    {U'r', reverse},
    {U'b', nextBand},
    {U'g', nextGrouping},
    {U'f', freeze},
    {U'?', showKeys},
    {U'j', chooseNext},
    {U'k', choosePrevious},
    {kKeyDown, chooseNext},
    {kKeyUp, choosePrevious},
    {kKeyPageDown, choosePageDown},
    {kKeyPageUp, choosePageUp},
    {kKeyHome, chooseFirst},
    {kKeyEnd, chooseLast},
    {kKeyEnter, showOneNetwork},
    {kKeyEscape, stepBack},
};

constexpr Binding kOneNetworkKeys[] = {
    {U'q', quit},
    {U'?', showKeys},
    {kKeyEscape, showList},
};

void press(WatchChoices& choices, Key key, const WatchScene& scene,
           std::span<const Binding> bindings) {
    for (const Binding& binding : bindings) {
        if (binding.key == key) binding.act(choices, scene);
    }
}

// The chosen row may not pass any longer.
void type(WatchChoices& choices, Key key) {
    std::u32string& filter = choices.filter;
    choices.chosen.reset();
    if (key == kKeyEnter || key == kKeyEscape) choices.isTyping = false;
    if (key == kKeyEscape) filter.clear();
    if (key == kKeyBackspace && !filter.empty()) filter.pop_back();
    if (typesCharacter(key) && filter.size() < kLongestFilter) filter += key;
}

}  // namespace

std::string WatchChoices::filterText() const {
    std::string text;
    for (const char32_t character : filter) appendUtf8(text, character);
    return text;
}

WatchChoices pressed(WatchChoices choices, Key key, const WatchScene& scene) {
    if (choices.isTyping) {
        type(choices, key);
        return choices;
    }
    switch (choices.page) {
        case WatchPage::List:
            press(choices, key, scene, kListKeys);
            break;
        case WatchPage::OneNetwork:
            press(choices, key, scene, kOneNetworkKeys);
            break;
        case WatchPage::Keys:
            choices.page = choices.behindKeys;
            break;
    }
    return choices;
}

std::vector<const NetworkColumn*> sortColumns(std::span<const NetworkColumn* const> columns,
                                              std::size_t width) {
    std::vector<const NetworkColumn*> found;
    const auto add = [&found](const NetworkColumn& column) {
        if (column.value == nullptr || column.layout.header[0] == '\0') return;
        found.push_back(&column);
    };
    for (const NetworkColumn* const column : columns) add(*column);
    if (!columns.empty()) return found;
    for (const NetworkColumn& column : networkColumns(ListKind::Watch)) {
        if (column.layout.from <= width && width < column.layout.below) add(column);
    }
    return found;
}

std::size_t firstRow(std::size_t first, std::optional<std::size_t> chosen, std::size_t rows,
                     std::size_t page) {
    if (!chosen || rows <= page) return 0;
    const std::size_t last = rows - page;  // the lowest place
    const std::size_t least = *chosen - std::min(*chosen, page - std::min<std::size_t>(page, 1));
    return std::min(std::clamp(first, std::min(least, last), *chosen), last);
}

}  // namespace halvane::tool
