// Characters of UTF-8 text, well-formed ones only: no overlong form, no surrogate, nothing beyond
// U+10FFFF (The Unicode Standard, table 3-7).
#ifndef HALVANE_PLATFORM_UTF8_INTERNAL_H
#define HALVANE_PLATFORM_UTF8_INTERNAL_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace halvane {

struct Utf8Character {
    char32_t codePoint;
    std::size_t size;  // in bytes
};

// As firstUtf8Character(), of text whose first byte is no ASCII.
std::optional<Utf8Character> multiByteUtf8Character(std::string_view text);

// The character that non-empty `text` begins with; absent where that is no UTF-8.
inline std::optional<Utf8Character> firstUtf8Character(std::string_view text) {
    const auto first = static_cast<std::uint8_t>(text[0]);
    if (first < 0x80) return Utf8Character{first, 1};
    return multiByteUtf8Character(text);
}

// Whether all of `text` is UTF-8.
bool isUtf8(std::string_view text);

}  // namespace halvane

#endif
