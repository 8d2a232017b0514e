#include "tools/halvane/networks/watch_foot.h"

#include <algorithm>
#include <initializer_list>

#include "halvane/air/channel.h"

#include "tools/halvane/networks/group_table.h"
#include "tools/halvane/output/cell_text.h"
#include "tools/halvane/output/shown_text.h"

namespace halvane::tool {

namespace {

using Around = CellSurroundings;

ShownText ascii(std::string_view text) {
    return ownText(text, {});
}

// What the user typed, whose characters are all visible.
ShownText filterOf(const WatchChoices& choices, const Around& around) {
    const std::string text = choices.filterText();
    return around.rules.isASCII ? shownText(text, around.rules) : ownText(text, around.rules);
}

// --- What a key has set; empty for nothing ---

ShownText filterValue(const WatchChoices& choices, const Around& around) {
    constexpr std::size_t kMostCells = 12;
    return cutAtEnd(filterOf(choices, around), kMostCells,
                    ownText(around.glyphs.cut, around.rules));
}

ShownText sortValue(const WatchChoices& choices, const Around&) {
    const auto& [keys, isReversed] = choices.order;
    ShownText value = ascii(keys.empty() ? "none" : keys.front().column->layout.name);
    if (isReversed) value.append(ascii(" reversed"));
    return value;
}

ShownText bandValue(const WatchChoices& choices, const Around&) {
    return ascii(choices.band ? air::bandName(*choices.band) : "all");
}

ShownText groupValue(const WatchChoices& choices, const Around&) {
    switch (choices.grouping) {
        case Grouping::None:
            break;
        case Grouping::Name:
            return ascii("name");
        case Grouping::Radio:
            return ascii("radio");
    }
    return {};
}

ShownText noValue(const WatchChoices&, const Around&) {
    return {};
}

struct Item {
    char sign;  // for the forms below
    const char* words;
    ShownText (*value)(const WatchChoices& choices, const Around& around) = noValue;
};
constexpr Item kItems[] = {
    {'q', "q quit"},
    {'/', "/ filter", filterValue},
    {'s', "s sort", sortValue},
    {'b', "b band", bandValue},
    {'g', "g group", groupValue},
    {'f', "f freeze"},
    {'E', "Enter one network"},
    {'?', "? keys"},
};

// From the widest on. The first one counts that stands from this width and fits.
struct Form {
    std::size_t from;
    std::size_t gap;
    bool hasValues;
    std::string_view items;
};
constexpr Form kForms[] = {
    {100, 3, true, "q/sbgfE?"}, {100, 2, true, "q/sbgfE?"}, {66, 2, true, "q/sbgf?"},
    {66, 2, true, "q/sb?"},     {0, 2, false, "q/sb?"},     {0, 2, false, "q/s?"},
    {0, 2, false, "q?"},        {0, 2, false, "q"},
};

ShownText keysIn(const Form& form, const WatchChoices& choices, const Around& around) {
    ShownText line;
    for (const Item& item : kItems) {
        if (form.items.find(item.sign) == std::string_view::npos) continue;
        line.append(ascii(std::string(line.isEmpty() ? 1 : form.gap, ' ')));
        const bool goesOn = item.sign == 'f' && choices.isFrozen;
        line.append(ascii(goesOn ? "f go on" : item.words));
        const ShownText value = form.hasValues ? item.value(choices, around) : ShownText();
        if (value.isEmpty()) continue;
        line.append(ascii(": "));
        line.append(value);
    }
    return line;
}

ShownText keysOfList(const WatchChoices& choices, std::size_t width, const Around& around) {
    for (const Form& form : kForms) {
        if (width < form.from) continue;
        ShownText line = keysIn(form, choices, around);
        if (line.cells() <= width) return line;
    }
    return {};
}

// The last of several texts that fits; the first is the shortest.
ShownText widestOf(std::initializer_list<std::string_view> texts, std::size_t width) {
    std::string_view found;
    for (const std::string_view text : texts) {
        if (text.size() <= width) found = text;
    }
    return ascii(found);
}

// The end of a text.
ShownText lastCells(const ShownText& text, std::size_t cells) {
    std::size_t unit = text.units().size(), octet = text.octets().size(), used = 0;
    while (unit > 0 && used + text.units()[unit - 1].cells <= cells) {
        --unit;
        used += text.units()[unit].cells;
        octet -= text.units()[unit].size;
    }
    ShownText end;
    for (; unit < text.units().size(); ++unit) {
        end.append(text.octets().substr(octet, text.units()[unit].size), text.units()[unit]);
        octet += text.units()[unit].size;
    }
    return end;
}

ShownText typedLine(const WatchChoices& choices, std::size_t width, const Around& around) {
    constexpr std::string_view kHint = "  Enter keeps  Escape drops";
    constexpr std::size_t kFrame = 3;  // " /" and "_"
    ShownText line = ascii(width >= kFrame ? " /" : "");
    line.append(lastCells(filterOf(choices, around), width - std::min(width, kFrame)));
    line.append(ascii("_"));
    if (line.cells() + kHint.size() <= width) line.append(ascii(kHint));
    return line;
}

ShownText footOf(const WatchChoices& choices, std::string_view message, std::size_t width,
                 const Around& around) {
    if (choices.isTyping) return typedLine(choices, width, around);
    if (!message.empty()) {
        return cutAtEnd(ascii(' ' + std::string(message)), width,
                        ownText(around.glyphs.cut, around.rules));
    }
    switch (choices.page) {
        case WatchPage::List:
            break;
        case WatchPage::OneNetwork:
            return widestOf({" q quit", " q quit  Escape back", " q quit  Escape back  ? keys"},
                            width);
        case WatchPage::Keys:
            return widestOf({" any key goes back"}, width);
    }
    return keysOfList(choices, width, around);
}

}  // namespace

std::string watchFoot(const WatchChoices& choices, std::string_view message, std::size_t width,
                      const CellSurroundings& surroundings, const Theme& theme) {
    return theme.painted(footOf(choices, message, width, surroundings), Meaning::Plain);
}

}  // namespace halvane::tool
