// Lists of records as tables that fit the terminal.
//
// For one thread.
#ifndef TOOLS_HALVANE_OUTPUT_LIST_TABLE_H
#define TOOLS_HALVANE_OUTPUT_LIST_TABLE_H

#include <cstddef>
#include <cstdio>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "tools/halvane/output/fitted_table.h"
#include "tools/halvane/output/glyphs.h"
#include "tools/halvane/output/shown_text.h"
#include "tools/halvane/output/standard_output.h"
#include "tools/halvane/output/surroundings.h"
#include "tools/halvane/output/theme.h"

namespace halvane::tool {

// How a list looks on what it is shown on.
struct ListLook {
    explicit ListLook(const Surroundings& surroundings)
        : width(surroundings.isTerminal ? surroundings.columns : std::nullopt),
          lines(surroundings.isTerminal ? surroundings.lines : std::nullopt),
          theme(ColorChoice::Auto, surroundings),
          rules(textRulesFor(surroundings, TextWishes())),
          glyphs(glyphsOf(glyphSetFor(surroundings, TextWishes()))) {}

    std::optional<std::size_t> width;  // absent: nothing is cut
    std::optional<std::size_t> lines;
    Theme theme;
    TextRules rules;
    const Glyphs& glyphs;
};

// "-" for an empty text. The first is for texts of others, the second for the tool's own.
inline FittedCell shownCell(std::string_view text, const ListLook& look) {
    return {text.empty() ? ownText("-", look.rules) : shownText(text, look.rules)};
}
inline FittedCell ownCell(std::string_view text, const ListLook& look,
                          Meaning meaning = Meaning::Plain) {
    return {ownText(text.empty() ? "-" : text, look.rules), meaning};
}

// A column of a list of records, besides its FittedColumn.
template <typename Record>
using ListCell = FittedCell (*)(const Record& record, const ListLook& look);

template <typename Record>
struct RecordList {
    TableDesign design;
    std::span<const ListCell<Record>> cells;  // as the design's columns
};

template <typename Record>
std::vector<FittedCell> rowOf(const RecordList<Record>& list, const FittedTable& table,
                              const Record& record, const ListLook& look) {
    std::vector<FittedCell> row;
    row.reserve(table.standing().size());
    for (const std::size_t column : table.standing()) {
        row.push_back(list.cells[column](record, look));
    }
    return row;
}

// Prints the header, then a line for each record, then the header again if the first has scrolled
// away. Makes the cells twice, and keeps no line.
template <typename Record>
void printList(const RecordList<Record>& list, const std::vector<Record>& records,
               const ListLook& look) {
    FittedTable table(list.design, look.width);
    for (const Record& record : records) table.fit(rowOf(list, table, record, look));
    table.settle();
    const ShownText mark = ownText(look.glyphs.cut, look.rules);
    put(table.header(look.theme));
    for (const Record& record : records) {
        put(table.line(rowOf(list, table, record, look), look.theme, mark));
    }
    if (FittedTable::repeatsHeader(records.size(), look.lines)) put(table.header(look.theme));
}

}  // namespace halvane::tool

#endif
