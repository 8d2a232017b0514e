#include "tools/halvane/output/text_table.h"

#include <algorithm>
#include <cstring>

namespace halvane::tool {

void TableLayout::addColumn(const char* title, Align align) {
    aligns_.push_back(align);
    widths_.push_back(std::strlen(title));
    titles_.emplace_back(title);
}

void TableLayout::fit(const std::vector<std::string>& cells) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (cells[i].size() > kGreatestColumnWidth) continue;
        widths_[i] = std::max(widths_[i], cells[i].size());
    }
}

std::string TableLayout::line(const std::vector<std::string>& cells) const {
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const std::size_t padding = widths_[i] - std::min(widths_[i], cells[i].size());
        const bool isLast = i + 1 == cells.size();
        if (aligns_[i] == Align::Right) line.append(padding, ' ');
        line += cells[i];
        if (aligns_[i] == Align::Left && !isLast) line.append(padding, ' ');
        line += isLast ? "\n" : "  ";
    }
    return line;
}

}  // namespace halvane::tool
