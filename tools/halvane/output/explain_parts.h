// Words of explanations.
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_OUTPUT_EXPLAIN_PARTS_H
#define TOOLS_HALVANE_OUTPUT_EXPLAIN_PARTS_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "tools/halvane/output/wrapped_text.h"

namespace halvane::tool {

// Why a value is not told.
inline constexpr std::string_view kFrameCut = "the frame was cut: what tells it may be missing";

using Parts = std::vector<TextPart>;

inline constexpr std::string_view kCommaJoiner = ", ";
inline constexpr std::string_view kColonJoiner = ": ";

inline TextPart part(std::string_view text, std::string_view joiner = "; ") {
    return TextPart::own(text, joiner);
}

// What was told and lost against another.
inline TextPart notTaken(const std::string& text) {
    TextPart line = part("not taken: " + text);
    line.beginsLine = true;
    return line;
}

inline std::string megahertz(int value) {
    return std::to_string(value) + " MHz";
}

// "1 stream", "2 streams".
inline std::string counted(int count, std::string_view noun) {
    return std::to_string(count) + ' ' + std::string(noun) + (count == 1 ? "" : "s");
}

// Four digits in capitals: "00CC".
std::string hexText(unsigned value);

// "PSK", "PSK and FT-PSK", "PSK, FT-PSK and SAE".
template <typename Items, typename ToText>
std::string listed(const Items& items, ToText toText) {
    std::string text;
    std::size_t left = items.size();
    for (const auto& item : items) {
        if (!text.empty()) text += left == 1 ? " and " : ", ";
        text += toText(item);
        --left;
    }
    return text;
}

}  // namespace halvane::tool

#endif
