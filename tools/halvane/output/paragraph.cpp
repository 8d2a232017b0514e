#include "tools/halvane/output/paragraph.h"

#include <algorithm>

namespace halvane::tool {

std::string paragraph(std::string_view head, std::string_view text, std::size_t indent,
                      std::size_t width) {
    std::string lines(head);
    std::size_t column = head.size();
    bool isLineEmpty = true;  // but for the head or the indent
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find(' '));
        text.remove_prefix(std::min(word.size() + 1, text.size()));
        if (!isLineEmpty && column + 1 + word.size() > width) {
            lines.append(1, '\n').append(indent, ' ');
            column = indent;
            isLineEmpty = true;
        }
        if (!isLineEmpty) {
            lines += ' ';
            ++column;
        }
        lines += word;
        column += word.size();
        isLineEmpty = false;
    }
    return lines += '\n';
}

}  // namespace halvane::tool
