#include "tools/halvane/output/fitted_table.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "tools/halvane/output/cell_text.h"

namespace halvane::tool {

namespace {

bool isUntold(const ShownText& text) {
    return text.octets().find_first_not_of(' ') == std::string::npos || text.octets() == "-";
}

std::size_t gapAfter(const FittedColumn& column) {
    return column.isJoinedToNext ? 0 : 1;
}

bool stands(const FittedColumn& column, std::optional<std::size_t> width) {
    if (!width) return column.below == kAnyWidth;
    return *width >= column.from && *width < column.below;
}

// Moves the end of the line to a cell. After a text of uncertain width the terminal is told the
// number of the cell.
void goTo(std::string& line, std::size_t cell, std::size_t& at, bool isCertain) {
    if (cell < at || (cell == at && isCertain)) return;
    if (isCertain) {
        line.append(cell - at, ' ');
    } else {
        line += "\x1B[" + std::to_string(cell + 1) + "G";
    }
    at = cell;
}

}  // namespace

FittedTable::FittedTable(const TableDesign& design, std::optional<std::size_t> width)
    : design_(design), width_(width) {
    for (std::size_t i = 0; i < design.columns.size(); ++i) {
        if (stands(design.columns[i], width)) standing_.push_back(i);
    }
    for (std::size_t i = 0; i < standing_.size(); ++i) {
        const FittedColumn& column = columnOf(i);
        places_.push_back({.cells = std::max(column.least, std::strlen(column.header))});
    }
}

void FittedTable::fit(std::span<const FittedCell> row) {
    for (std::size_t i = 0; i < places_.size(); ++i) {
        const ShownText& text = row[i].text;
        const std::size_t most = width_ ? columnOf(i).most : kAnyWidth;
        places_[i].cells = std::max(places_[i].cells, std::min(text.cells(), most));
        places_[i].isTold = places_[i].isTold || !isUntold(text);
    }
}

void FittedTable::settle() {
    leaveOutUntold();
    if (width_) squeeze();
    placeColumns();
}

void FittedTable::leaveOutUntold() {
    for (std::size_t i = 0; i < places_.size(); ++i) {
        if (!columnOf(i).isLeftOutUntold || places_[i].isTold) continue;
        places_[i].isLeftOut = true;
        places_[i].cells = 0;
    }
}

std::size_t FittedTable::lineCells() const {
    std::size_t cells = 0;
    std::size_t gap = 0;
    for (std::size_t i = 0; i < places_.size(); ++i) {
        if (places_[i].isLeftOut) continue;
        cells += gap + places_[i].cells;
        gap = gapAfter(columnOf(i));
    }
    return cells;
}

void FittedTable::squeeze() {
    for (const Squeeze& step : design_.squeezes) {
        const std::size_t line = lineCells();
        if (line <= *width_) return;
        if (*width_ < step.from) continue;
        for (std::size_t i = 0; i < places_.size(); ++i) {
            Place& place = places_[i];
            if (std::string_view(columnOf(i).name) != step.column || place.cells <= step.least) {
                continue;
            }
            place.cells -= std::min(line - *width_, place.cells - step.least);
        }
    }
}

void FittedTable::placeColumns() {
    std::size_t begin = 0;
    for (std::size_t i = 0; i < places_.size(); ++i) {
        places_[i].begin = begin;
        if (!places_[i].isLeftOut) begin += places_[i].cells + gapAfter(columnOf(i));
    }
}

std::string FittedTable::header(const Theme& theme) const {
    std::vector<FittedCell> row(places_.size());
    for (std::size_t i = 0; i < row.size(); ++i) {
        row[i] = {ownText(columnOf(i).header, {}), Meaning::Header};
    }
    return line(row, theme, {});
}

// Returns the number of cells up to the last one that is not blank.
std::size_t FittedTable::lastOf(std::span<const FittedCell> row) const {
    std::size_t count = places_.size();
    const auto isBlank = [&](std::size_t i) {
        return places_[i].isLeftOut ||
               row[i].text.octets().find_first_not_of(' ') == std::string::npos;
    };
    while (count > 0 && isBlank(count - 1)) --count;
    return count;
}

std::string FittedTable::line(std::span<const FittedCell> row, const Theme& theme,
                              const ShownText& mark) const {
    std::string line;
    std::size_t at = 0;  // cell of the end of the line
    bool isCertain = true;
    const std::size_t count = lastOf(row);
    for (std::size_t i = 0; i < count; ++i) {
        const Place& place = places_[i];
        if (place.isLeftOut) continue;
        ShownText text = cutInMiddle(row[i].text, place.cells, mark);
        const bool isRight = columnOf(i).align == Align::Right;
        const std::size_t begin = place.begin + (isRight ? place.cells - text.cells() : 0);
        if (i + 1 == count) text.dropTrailingBlanks();
        if (text.isEmpty()) continue;
        goTo(line, begin, at, isCertain);
        line += theme.painted(text, row[i].meaning);
        at += text.cells();
        isCertain = !(text.isUnsteady() && theme.movesCursor());
    }
    return line += '\n';
}

bool FittedTable::repeatsHeader(std::size_t rows, std::optional<std::size_t> terminalLines) {
    return terminalLines && rows + 1 > *terminalLines;
}

}  // namespace halvane::tool
