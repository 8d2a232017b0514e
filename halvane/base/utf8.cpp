#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "halvane/base/utf8_internal.h"

namespace halvane {

namespace {

// A row of the table of well-formed byte sequences: the second byte is what excludes overlong
// forms, surrogates and values beyond U+10FFFF.
struct Utf8Form {
    std::uint8_t firstMin, firstMax;
    std::uint8_t secondMin, secondMax;
    std::size_t size;
};
constexpr std::array<Utf8Form, 8> kMultiByteForms = {{
    {0xC2, 0xDF, 0x80, 0xBF, 2},
    {0xE0, 0xE0, 0xA0, 0xBF, 3},
    {0xE1, 0xEC, 0x80, 0xBF, 3},
    {0xED, 0xED, 0x80, 0x9F, 3},
    {0xEE, 0xEF, 0x80, 0xBF, 3},
    {0xF0, 0xF0, 0x90, 0xBF, 4},
    {0xF1, 0xF3, 0x80, 0xBF, 4},
    {0xF4, 0xF4, 0x80, 0x8F, 4},
}};

std::optional<Utf8Character> multiByteCharacter(std::string_view text) {
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

}  // namespace

std::optional<Utf8Character> firstUtf8Character(std::string_view text) {
    const std::uint8_t first = byteAt(text, 0);
    if (first < 0x80) return Utf8Character{first, 1};
    return multiByteCharacter(text);
}

bool isUtf8(std::string_view text) {
    while (!text.empty()) {
        const auto character = firstUtf8Character(text);
        if (!character) return false;
        text.remove_prefix(character->size);
    }
    return true;
}

std::size_t utf16Length(std::string_view text) {
    constexpr char32_t kFirstOfTwoUnits = 0x10000;
    std::size_t length = 0;
    while (!text.empty()) {
        const auto character = firstUtf8Character(text);
        length += character && character->codePoint >= kFirstOfTwoUnits ? 2 : 1;
        text.remove_prefix(character ? character->size : 1);
    }
    return length;
}

}  // namespace halvane
