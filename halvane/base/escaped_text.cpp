#include "halvane/base/escaped_text.h"

#include <algorithm>
#include <array>

#include "halvane/base/ascii_internal.h"
#include "halvane/base/utf8_internal.h"

namespace halvane {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

constexpr std::array<Range, 17> kUnshowable = {{
    {0x0000, 0x001F},    // C0 controls
    {0x007F, 0x009F},    // DELETE and the C1 controls
    {0x00AD, 0x00AD},    // soft hyphen
    {0x034F, 0x034F},    // combining grapheme joiner
    {0x061C, 0x061C},    // Arabic letter mark
    {0x115F, 0x1160},    // Hangul fillers
    {0x17B4, 0x17B5},    // Khmer inherent vowels
    {0x180E, 0x180E},    // Mongolian vowel separator
    {0x200B, 0x200F},    // zero-width characters, left-to-right and right-to-left marks
    {0x2028, 0x202E},    // line and paragraph separators, bidirectional embeddings and overrides
    {0x2060, 0x206F},    // word joiner, invisible operators, bidirectional isolates
    {0x3164, 0x3164},    // Hangul filler
    {0xFEFF, 0xFEFF},    // zero-width no-break space
    {0xFFA0, 0xFFA0},    // half-width Hangul filler
    {0xFFF9, 0xFFFB},    // interlinear annotation
    {0x1D173, 0x1D17A},  // musical beams and phrases
    {0xE0000, 0xE007F},  // tags
}};

bool isShowable(char32_t character) {
    return std::ranges::none_of(kUnshowable, [character](const Range& range) {
        return character >= range.first && character <= range.last;
    });
}

void appendEscaped(std::string& text, std::string_view octets) {
    for (const char octet : octets) {
        text += "\\x";
        appendHexOctet(text, static_cast<std::uint8_t>(octet), kUpperHexDigits);
    }
}

}  // namespace

std::string escapedText(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size());
    while (!text.empty()) {
        const auto character = firstUtf8Character(text);
        // An octet that starts no character is escaped alone. The next octet may start one.
        const std::string_view octets = text.substr(0, character ? character->size : 1);
        if (!character || !isShowable(character->codePoint)) {
            appendEscaped(escaped, octets);
        } else if (character->codePoint == '\\') {
            escaped += "\\\\";
        } else {
            escaped += octets;
        }
        text.remove_prefix(octets.size());
    }
    return escaped;
}

std::string escapedText(std::span<const std::uint8_t> octets) {
    return escapedText({reinterpret_cast<const char*>(octets.data()), octets.size()});
}

}  // namespace halvane
