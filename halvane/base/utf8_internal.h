// Characters of UTF-8 text (The Unicode Standard, table 3-7).
#ifndef HALVANE_BASE_UTF8_INTERNAL_H
#define HALVANE_BASE_UTF8_INTERNAL_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace halvane {

constexpr std::uint8_t byteAt(std::string_view text, std::size_t index) {
    return static_cast<std::uint8_t>(text[index]);
}

struct Utf8Character {
    char32_t codePoint;
    std::size_t size;  // in bytes
};

// A byte of a character other than its first.
constexpr bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// The character that `text` begins with; absent where that is no UTF-8.
// REQUIRES: `text` is not empty.
std::optional<Utf8Character> firstUtf8Character(std::string_view text);

// Whether all of `text` is characters.
bool isUtf8(std::string_view text);

// The length of `text` in UTF-16 code units. A byte that belongs to no character counts as one.
std::size_t utf16Length(std::string_view text);

}  // namespace halvane

#endif
