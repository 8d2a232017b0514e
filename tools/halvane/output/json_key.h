// Names of JSON members.
#ifndef TOOLS_HALVANE_OUTPUT_JSON_KEY_H
#define TOOLS_HALVANE_OUTPUT_JSON_KEY_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace halvane::tool {

// A literal of letters, digits, underscores and dollar signs, which needs no escapes. Any other
// literal does not compile.
struct JSONKey {
    std::string_view text;

    // The name in quotes, and a colon. Writers copy all of it, whatever its size is: a copy of a
    // known size needs no loop.
    static constexpr std::size_t kRoom = 48;
    std::array<char, kRoom> member{};
    std::size_t memberSize = text.size() + 3;

    template <std::size_t size>
    consteval JSONKey(const char (&literal)[size]) : text(literal, size - 1) {
        static_assert(size - 1 + 3 <= kRoom, "a key is too long");
        if (text.empty() || !std::ranges::all_of(text, isPlain)) throw "a key needs escapes";
        member[0] = '"';
        std::ranges::copy(text, member.begin() + 1);
        member[size] = '"';
        member[size + 1] = ':';
    }

  private:
    static constexpr bool isPlain(char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               c == '_' || c == '$';
    }
};

}  // namespace halvane::tool

#endif
