// Words for a command line that the user can copy.
#ifndef TOOLS_HALVANE_OUTPUT_SHELL_WORD_H
#define TOOLS_HALVANE_OUTPUT_SHELL_WORD_H

#include <algorithm>
#include <string>
#include <string_view>

namespace halvane::tool {

// Returns the text as one word for a POSIX shell: between single quotes unless it consists of ASCII
// letters, digits and the signs of names and numbers.
inline std::string shellWord(std::string_view text) {
    const auto isPlain = [](char sign) {
        return (sign >= 'a' && sign <= 'z') || (sign >= 'A' && sign <= 'Z') ||
               (sign >= '0' && sign <= '9') ||
               std::string_view("_-+./:@%,").find(sign) != std::string_view::npos;
    };
    if (!text.empty() && std::ranges::all_of(text, isPlain)) return std::string(text);
    std::string word = "'";
    for (const char sign : text) {
        if (sign == '\'') {
            word += "'\\''";
        } else {
            word += sign;
        }
    }
    return word + '\'';
}

}  // namespace halvane::tool

#endif
