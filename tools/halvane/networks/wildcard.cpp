#include "tools/halvane/networks/wildcard.h"

#include <algorithm>
#include <cstddef>

namespace halvane::tool {

namespace {

// The octets of the character at the start of the text.
std::size_t sizeOfCharacter(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t size = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
    if (size > text.size()) return 1;
    const bool isWhole = std::ranges::all_of(text.substr(1, size - 1),
                                             [](char octet) { return (octet & 0xC0) == 0x80; });
    return isWhole ? size : 1;
}

// A place in the pattern and in the text.
struct Place {
    std::string_view pattern;
    std::string_view text;

    // Goes over one sign that is no '*'. Returns false if it does not describe the text's start.
    bool step() {
        if (pattern.empty() || text.empty()) return false;
        if (pattern.front() == '?') {
            pattern.remove_prefix(1);
            text.remove_prefix(sizeOfCharacter(text));
            return true;
        }
        const bool isEscaped = pattern.size() > 1 && pattern.front() == '\\' &&
                               std::string_view("*?\\").find(pattern[1]) != std::string_view::npos;
        if (pattern[isEscaped ? 1 : 0] != text.front()) return false;
        pattern.remove_prefix(isEscaped ? 2 : 1);
        text.remove_prefix(1);
        return true;
    }
};

}  // namespace

bool matchesWildcard(std::string_view pattern, std::string_view text) {
    Place place{pattern, text};
    Place afterStar{};
    bool hasStar = false;
    while (true) {
        if (place.pattern.starts_with('*')) {
            place.pattern.remove_prefix(1);
            afterStar = place;
            hasStar = true;
            continue;
        }
        if (place.pattern.empty() && place.text.empty()) return true;
        if (place.step()) continue;
        // The last '*' takes one octet more: what an earlier one could take, it can take as well.
        if (!hasStar || afterStar.text.empty()) return false;
        afterStar.text.remove_prefix(1);
        place = afterStar;
    }
}

}  // namespace halvane::tool
