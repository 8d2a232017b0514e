// Tables for people: a line of titles, then one line per row.
#ifndef TOOLS_HALVANE_OUTPUT_TEXT_TABLE_H
#define TOOLS_HALVANE_OUTPUT_TEXT_TABLE_H

#include <cstddef>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "tools/halvane/output/standard_output.h"

namespace halvane::tool {

enum class Align { Left, Right };

// A column of a table of records; `cell` is safe to show.
template <typename Record>
struct Column {
    const char* title;
    Align align;
    std::string (*cell)(const Record& record);
};

// A cell that is longer than this shifts the rest of its own line, but no other line.
inline constexpr std::size_t kGreatestColumnWidth = 128;

// Columns are as wide as their widest cell, counted in octets, and two blanks apart. The last
// column has no padding if it is aligned to the left, so text that is not ASCII belongs there. A
// row has one cell per column. The layout does not keep the cells.
class TableLayout {
  public:
    void addColumn(const char* title, Align align);

    // Makes room for a row.
    void fit(const std::vector<std::string>& cells);

    std::string titles() const { return line(titles_); }
    std::string line(const std::vector<std::string>& cells) const;

  private:
    std::vector<Align> aligns_;
    std::vector<std::size_t> widths_;
    std::vector<std::string> titles_;
};

template <typename Record>
std::vector<std::string> cellsOf(std::span<const Column<Record>> columns, const Record& record) {
    std::vector<std::string> cells;
    cells.reserve(columns.size());
    for (const auto& column : columns) cells.push_back(column.cell(record));
    return cells;
}

// Makes the cells twice, the first time for the widths, and keeps no line.
template <typename Record>
void printTable(std::span<const Column<Record>> columns, const std::vector<Record>& records) {
    TableLayout layout;
    for (const auto& column : columns) layout.addColumn(column.title, column.align);
    for (const Record& record : records) layout.fit(cellsOf(columns, record));
    put(layout.titles());
    for (const Record& record : records) put(layout.line(cellsOf(columns, record)));
}

}  // namespace halvane::tool

#endif
