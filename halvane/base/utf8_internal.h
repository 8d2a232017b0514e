// Characters of UTF-8 text (The Unicode Standard, table 3-7).
#ifndef HALVANE_BASE_UTF8_INTERNAL_H
#define HALVANE_BASE_UTF8_INTERNAL_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace halvane {

constexpr std::uint8_t byteAt(std::string_view text, std::size_t index) {
    return static_cast<std::uint8_t>(text[index]);
}

struct Utf8Character {
    char32_t codePoint;
    std::size_t size;  // in bytes
};

// Whether the byte belongs to a character but is not its first.
constexpr bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// A row of the table of well-formed byte sequences. The range of the second byte excludes overlong
// forms, surrogates and values beyond U+10FFFF.
struct Utf8Form {
    std::uint8_t firstMin, firstMax;
    std::uint8_t secondMin, secondMax;
    std::size_t size;
};
inline constexpr std::array<Utf8Form, 8> kMultiByteForms = {{
    {0xC2, 0xDF, 0x80, 0xBF, 2},
    {0xE0, 0xE0, 0xA0, 0xBF, 3},
    {0xE1, 0xEC, 0x80, 0xBF, 3},
    {0xED, 0xED, 0x80, 0x9F, 3},
    {0xEE, 0xEF, 0x80, 0xBF, 3},
    {0xF0, 0xF0, 0x90, 0xBF, 4},
    {0xF1, 0xF3, 0x80, 0xBF, 4},
    {0xF4, 0xF4, 0x80, 0x8F, 4},
}};

inline std::optional<Utf8Character> multiByteCharacter(std::string_view text) {
    const std::uint8_t first = byteAt(text, 0);
    const auto form = std::ranges::find_if(kMultiByteForms, [first](const Utf8Form& row) {
        return first >= row.firstMin && first <= row.firstMax;
    });
    if (form == kMultiByteForms.end() || text.size() < form->size) return std::nullopt;
    const std::uint8_t second = byteAt(text, 1);
    if (second < form->secondMin || second > form->secondMax) return std::nullopt;

    char32_t codePoint = first & (0x7Fu >> form->size);
    for (std::size_t i = 1; i < form->size; ++i) {
        const std::uint8_t byte = byteAt(text, i);
        if ((byte & 0xC0) != 0x80) return std::nullopt;
        codePoint = codePoint << 6 | (byte & 0x3F);
    }
    return Utf8Character{codePoint, form->size};
}

// Returns the first character of `text`; absent if `text` does not begin with valid UTF-8.
// REQUIRES: `text` is not empty.
inline std::optional<Utf8Character> firstUtf8Character(std::string_view text) {
    const std::uint8_t first = byteAt(text, 0);
    if (first < 0x80) return Utf8Character{first, 1};
    return multiByteCharacter(text);
}

// Appends the octets of a character.
// REQUIRES: it is a code point of Unicode, and no surrogate.
inline void appendUtf8(std::string& out, char32_t codePoint) {
    if (codePoint < 0x80) {
        out += static_cast<char>(codePoint);
        return;
    }
    const int following = codePoint < 0x800 ? 1 : codePoint < 0x10000 ? 2 : 3;
    const std::uint32_t lengthMark = 0xFF00u >> (following + 1) & 0xFF;  // 0xC0, 0xE0, 0xF0
    out += static_cast<char>(lengthMark | codePoint >> 6 * following);
    for (int i = following - 1; i >= 0; --i) {
        out += static_cast<char>(0x80 | (codePoint >> 6 * i & 0x3F));
    }
}

// Whether all of `text` is valid UTF-8.
bool isUtf8(std::string_view text);

// Returns the length of `text` in UTF-16 code units. A byte that belongs to no character counts as
// one.
std::size_t utf16Length(std::string_view text);

}  // namespace halvane

#endif
