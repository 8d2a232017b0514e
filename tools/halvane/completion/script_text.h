// Pieces of shell scripts.
#ifndef TOOLS_HALVANE_COMPLETION_SCRIPT_TEXT_H
#define TOOLS_HALVANE_COMPLETION_SCRIPT_TEXT_H

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace halvane::tool {

// The words with blanks between.
inline std::string spaced(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) text.append(text.empty() ? "" : " ").append(word);
    return text;
}

// The program's name as a part of a function's name.
inline std::string functionName(std::string_view program) {
    std::string name(program);
    std::ranges::replace(name, '-', '_');
    return name;
}

// Every `what` in the text becomes `with`.
inline std::string replacedText(std::string text, std::string_view what, std::string_view with) {
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += with.size()) {
        text.replace(at, what.size(), with);
    }
    return text;
}

}  // namespace halvane::tool

#endif
