#include "tools/halvane/output/shell_word.h"

#include <algorithm>

#include "halvane/base/escaped_text.h"

namespace halvane::tool {

namespace {

bool isPlain(char sign) {
    return (sign >= 'a' && sign <= 'z') || (sign >= 'A' && sign <= 'Z') ||
           (sign >= '0' && sign <= '9') ||
           std::string_view("_-+./:@%,").find(sign) != std::string_view::npos;
}

// Returns the text with another one in the place of each such sign.
std::string replaced(std::string_view text, char sign, std::string_view other) {
    std::string result;
    for (const char each : text) {
        if (each == sign) {
            result += other;
        } else {
            result += each;
        }
    }
    return result;
}

}  // namespace

std::string shellWord(std::string_view text) {
    if (!text.empty() && std::ranges::all_of(text, isPlain)) return std::string(text);
    const std::string escaped = escapedText(text);
    const bool isSafe = escaped == replaced(text, '\\', "\\\\");
    if (!isSafe) return "$'" + replaced(escaped, '\'', "\\'") + '\'';
    return '\'' + replaced(text, '\'', "'\\''") + '\'';
}

}  // namespace halvane::tool
