#include "tools/halvane/text_table.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace halvane::tool {

void TextTable::addColumn(const char* title, Align align) {
    aligns_.push_back(align);
    widths_.push_back(std::strlen(title));
    titles_.emplace_back(title);
}

void TextTable::addRow(std::vector<std::string> cells) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
        widths_[i] = std::max(widths_[i], cells[i].size());
    }
    rows_.push_back(std::move(cells));
}

std::string TextTable::lineOf(const std::vector<std::string>& cells) const {
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const std::string padding(widths_[i] - cells[i].size(), ' ');
        const bool isLast = i + 1 == cells.size();
        if (aligns_[i] == Align::Right) line += padding;
        line += cells[i];
        if (aligns_[i] == Align::Left && !isLast) line += padding;
        line += isLast ? "\n" : "  ";
    }
    return line;
}

std::string TextTable::text() const {
    std::string text = lineOf(titles_);
    for (const auto& row : rows_) text += lineOf(row);
    return text;
}

}  // namespace halvane::tool
