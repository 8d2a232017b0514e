#include "tools/halvane/output/message.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

#include "halvane/base/escaped_text.h"

#include "tools/halvane/output/progress_bar.h"

namespace halvane::tool {

void complain(const std::string& message) {
    complain(message, {});
}

// In one piece, so that messages of others do not come between.
void complain(const std::string& message, std::string_view hint) {
    std::string text = "halvane: " + escapedText(message) + '\n';
    while (!hint.empty()) {
        const std::string_view line = hint.substr(0, hint.find('\n'));
        text.append("  ").append(escapedText(line)).append("\n");
        hint.remove_prefix(std::min(hint.size(), line.size() + 1));
    }
    ProgressBar::clearCurrent();
    std::fputs(text.c_str(), stderr);
}

std::string hintOf(const std::vector<std::string>& lines) {
    std::string hint;
    for (const std::string& line : lines) hint += line + '\n';
    return hint;
}

std::string inputName(const std::string& path) {
    if (path == "-") return "standard input";
    return path.empty() ? "''" : path;
}

}  // namespace halvane::tool
