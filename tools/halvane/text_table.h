// Tables for people: a line of titles, then a line a row.
#ifndef TOOLS_HALVANE_TEXT_TABLE_H
#define TOOLS_HALVANE_TEXT_TABLE_H

#include <span>
#include <string>
#include <vector>

#include "tools/halvane/standard_output.h"

namespace halvane::tool {

enum class Align { Left, Right };

// A column of a table of records; `cell` is safe to show.
template <typename Record>
struct Column {
    const char* title;
    Align align;
    std::string (*cell)(const Record& record);
};

class TextTable {
  public:
    void addColumn(const char* title, Align align);

    // One cell a column.
    void addRow(std::vector<std::string> cells);

    // Columns are as wide as their widest cell, counted in octets, and two blanks apart. Nothing
    // pads the last one where it is aligned to the left, so that what is not ASCII belongs there.
    std::string text() const;

  private:
    std::string lineOf(const std::vector<std::string>& cells) const;

    std::vector<Align> aligns_;
    std::vector<std::size_t> widths_;
    std::vector<std::string> titles_;
    std::vector<std::vector<std::string>> rows_;
};

template <typename Record>
void printTable(std::span<const Column<Record>> columns, const std::vector<Record>& records) {
    TextTable table;
    for (const auto& column : columns) table.addColumn(column.title, column.align);
    for (const Record& record : records) {
        std::vector<std::string> cells;
        for (const auto& column : columns) cells.push_back(column.cell(record));
        table.addRow(std::move(cells));
    }
    put(table.text());
}

}  // namespace halvane::tool

#endif
