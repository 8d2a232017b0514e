#include "tools/halvane/output/cell_text.h"

#include <numeric>
#include <span>

namespace halvane::tool {

namespace {

// Units at one end of a text.
struct Part {
    std::size_t count = 0;
    std::size_t cells = 0;
};

// Returns as many units of these as fit, from the first.
template <typename Iterator>
Part fitting(Iterator unit, Iterator end, std::size_t cells) {
    Part part;
    for (; unit != end && part.cells + unit->cells <= cells; ++unit) {
        ++part.count;
        part.cells += unit->cells;
    }
    return part;
}

std::size_t octetsOf(std::span<const TextUnit> units) {
    return std::accumulate(
        units.begin(), units.end(), std::size_t{0},
        [](std::size_t octets, const TextUnit& unit) { return octets + unit.size; });
}

// Appends `count` units of the text from this one on.
void appendUnits(ShownText& to, const ShownText& text, std::size_t from, std::size_t count) {
    const std::span units(text.units());
    std::string_view octets = std::string_view(text.octets()).substr(octetsOf(units.first(from)));
    for (const TextUnit& unit : units.subspan(from, count)) {
        to.append(octets.substr(0, unit.size), unit);
        octets.remove_prefix(unit.size);
    }
}

void appendMark(ShownText& to, const ShownText& mark) {
    std::string_view octets = mark.octets();
    for (TextUnit unit : mark.units()) {
        unit.isAdded = true;
        to.append(octets.substr(0, unit.size), unit);
        octets.remove_prefix(unit.size);
    }
}

ShownText cut(const ShownText& text, std::size_t head, std::size_t rest, const ShownText& mark) {
    const auto& units = text.units();
    const Part first = fitting(units.begin(), units.end(), head);
    const auto left = units.rend() - static_cast<std::ptrdiff_t>(first.count);
    const Part last = rest == 0 ? Part{} : fitting(units.rbegin(), left, head + rest - first.cells);
    ShownText result;
    appendUnits(result, text, 0, first.count);
    appendMark(result, mark);
    appendUnits(result, text, units.size() - last.count, last.count);
    return result;
}

}  // namespace

std::size_t cellsOf(std::string_view text, const TextRules& rules) {
    return ownText(text, rules).cells();
}

ShownText cutInMiddle(const ShownText& text, std::size_t cells, const ShownText& mark) {
    if (text.cells() <= cells) return text;
    if (cells < mark.cells()) return {};
    const std::size_t room = cells - mark.cells();
    const std::size_t tail = room * 2 / 5;
    return cut(text, room - tail, tail, mark);
}

ShownText cutAtEnd(const ShownText& text, std::size_t cells, const ShownText& mark) {
    if (text.cells() <= cells) return text;
    if (cells < mark.cells()) return {};
    return cut(text, cells - mark.cells(), 0, mark);
}

}  // namespace halvane::tool
