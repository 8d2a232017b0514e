#include "tools/halvane/networks/watch_keys_screen.h"

#include <algorithm>
#include <string_view>

namespace halvane::tool {

namespace {

struct Row {
    std::string_view keys;
    std::string_view meaning;
};
constexpr Row kRows[] = {
    {"q", "quit; the table stays"},
    {"/", "filter: how names or addresses begin; Enter keeps, Escape drops"},
    {"s S", "sort by the next, the previous column"},
    {"r", "reverse the order"},
    {"b", "band: all, 2.4, 5, 6"},
    {"g", "group: none, by name, by radio"},
    {"f", "freeze the rows, or let them go on"},
    {"j k, arrows", "choose a row; Escape lets it go"},
    {"Enter", "one network; Escape goes back"},
    {"?", "this list; any key goes back"},
};

constexpr std::size_t keysWidth() {
    std::size_t widest = 0;
    for (const Row& row : kRows) widest = std::max(widest, row.keys.size());
    return widest;
}

}  // namespace

std::vector<std::string> watchKeysScreen(std::size_t width, std::size_t height,
                                         const Theme& theme) {
    constexpr std::string_view kTitle = " KEYS";
    std::vector<std::string> lines = {theme.painted(kTitle.substr(0, width), Meaning::Header)};
    for (const Row& row : kRows) {
        std::string line = ' ' + std::string(row.keys);
        line.append(keysWidth() + 3 - line.size(), ' ').append(row.meaning);
        lines.push_back(line.substr(0, width));
    }
    lines.resize(std::min(lines.size(), height));
    return lines;
}

}  // namespace halvane::tool
