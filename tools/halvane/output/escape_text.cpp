#include "tools/halvane/output/escape_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

#include "halvane/base/byte_cursor.h"

namespace halvane::tool {

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

// What a first octet says of its sequence: The Unicode Standard, table 3-7. The narrower range of
// the second octet keeps out overlong forms, surrogates, and what lies above U+10FFFF.
struct Lead {
    std::uint8_t first;
    std::uint8_t last;
    std::uint8_t continuations;
    std::uint8_t secondFirst;
    std::uint8_t secondLast;
    std::uint8_t valueBits;  // mask of the octet's share of the value
};

constexpr std::array<Lead, 9> kLeads = {{
    {0x00, 0x7F, 0, 0x00, 0x00, 0x7F},
    {0xC2, 0xDF, 1, 0x80, 0xBF, 0x1F},
    {0xE0, 0xE0, 2, 0xA0, 0xBF, 0x0F},
    {0xE1, 0xEC, 2, 0x80, 0xBF, 0x0F},
    {0xED, 0xED, 2, 0x80, 0x9F, 0x0F},
    {0xEE, 0xEF, 2, 0x80, 0xBF, 0x0F},
    {0xF0, 0xF0, 3, 0x90, 0xBF, 0x07},
    {0xF1, 0xF3, 3, 0x80, 0xBF, 0x07},
    {0xF4, 0xF4, 3, 0x80, 0x8F, 0x07},
}};

const Lead* findLead(std::uint8_t octet) {
    const auto found = std::ranges::find_if(
        kLeads, [octet](const Lead& lead) { return octet >= lead.first && octet <= lead.last; });
    return found == kLeads.end() ? nullptr : &*found;
}

// Reads one well-formed character. Where there is none, the cursor may stand anywhere.
std::optional<char32_t> readCharacter(ByteCursor& cursor) {
    const auto octet = cursor.u8();
    const Lead* lead = octet ? findLead(*octet) : nullptr;
    if (!lead) return std::nullopt;
    char32_t value = *octet & lead->valueBits;
    for (unsigned i = 0; i < lead->continuations; ++i) {
        const auto next = cursor.u8();
        const std::uint8_t first = i == 0 ? lead->secondFirst : 0x80;
        const std::uint8_t last = i == 0 ? lead->secondLast : 0xBF;
        if (!next || *next < first || *next > last) return std::nullopt;
        value = value << 6 | (*next & 0x3Fu);
    }
    return value;
}

void appendEscaped(std::string& text, std::span<const std::uint8_t> octets) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    for (const std::uint8_t octet : octets) {
        text += "\\x";
        text += kDigits[octet >> 4];
        text += kDigits[octet & 0x0F];
    }
}

}  // namespace

std::string escapeSSID(std::span<const std::uint8_t> ssid) {
    std::string text;
    ByteCursor cursor(ssid);
    while (!cursor.atEnd()) {
        ByteCursor ahead = cursor;
        const auto character = readCharacter(ahead);
        // An octet that starts no character is escaped alone; the next may start one.
        const std::size_t size = character ? ahead.position() - cursor.position() : 1;
        const auto octets = *cursor.take(size);
        if (!character || !isShowable(*character)) {
            appendEscaped(text, octets);
        } else if (*character == '\\') {
            text += "\\\\";
        } else {
            text.append(octets.begin(), octets.end());
        }
    }
    return text;
}

std::string escapeText(std::string_view text) {
    return escapeSSID({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

}  // namespace halvane::tool
