// Names of JSON members.
#ifndef TOOLS_HALVANE_OUTPUT_JSON_KEY_H
#define TOOLS_HALVANE_OUTPUT_JSON_KEY_H

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace halvane::tool {

// A literal of letters, digits, underscores and dollar signs, which needs no escapes. Any other
// literal does not compile.
struct JSONKey {
    std::string_view text;

    template <std::size_t size>
    consteval JSONKey(const char (&literal)[size]) : text(literal, size - 1) {
        if (text.empty() || !std::ranges::all_of(text, isPlain)) throw "a key needs escapes";
    }

  private:
    static constexpr bool isPlain(char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               c == '_' || c == '$';
    }
};

}  // namespace halvane::tool

#endif
