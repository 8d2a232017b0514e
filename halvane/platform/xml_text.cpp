#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "halvane/platform/xml_text_internal.h"

namespace halvane {

namespace {

struct Character {
    char32_t codePoint;
    std::size_t size;  // in bytes
};

// A row of the table of well-formed byte sequences (The Unicode Standard, table 3-7): the second
// byte is what excludes overlong forms, surrogates and values beyond U+10FFFF.
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

constexpr std::uint8_t byteAt(std::string_view text, std::size_t index) {
    return static_cast<std::uint8_t>(text[index]);
}

std::optional<Character> multiByteCharacter(std::string_view text) {
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
    return Character{codePoint, form->size};
}

// The character that non-empty `text` begins with; absent where that is no UTF-8.
std::optional<Character> firstCharacter(std::string_view text) {
    const std::uint8_t first = byteAt(text, 0);
    if (first < 0x80) return Character{first, 1};
    return multiByteCharacter(text);
}

bool isXmlSpace(char32_t codePoint) {
    return codePoint == ' ' || codePoint == '\t' || codePoint == '\n' || codePoint == '\r';
}

bool isIn10(char32_t codePoint) {
    return codePoint >= 0x20 || isXmlSpace(codePoint);
}

// Beside what is never literal, XML 1.1 restricts the C1 controls, and takes U+0085 and U+2028
// for line ends; a carriage return would be read as a newline in either version.
bool needsReference(char32_t codePoint, XmlVersion version) {
    if (codePoint == '\r' || !isIn10(codePoint)) return true;
    if (version == XmlVersion::V1_0) return false;
    return (codePoint >= 0x7F && codePoint <= 0x9F) || codePoint == 0x2028;
}

void appendReference(std::string& out, char32_t codePoint) {
    out += "&#" + std::to_string(static_cast<std::uint32_t>(codePoint)) + ";";
}

void appendCharacter(std::string& out, std::string_view bytes, char32_t codePoint,
                     XmlVersion version) {
    if (codePoint == '&') {
        out += "&amp;";
    } else if (codePoint == '<') {
        out += "&lt;";
    } else if (codePoint == '>') {  // "]]>" must not stand in character data
        out += "&gt;";
    } else if (needsReference(codePoint, version)) {
        appendReference(out, codePoint);
    } else {
        out += bytes;
    }
}

}  // namespace

std::optional<XmlVersion> xmlVersionOfText(std::string_view text) {
    auto version = XmlVersion::V1_0;
    while (!text.empty()) {
        const auto character = firstCharacter(text);
        if (!character) return std::nullopt;
        const char32_t codePoint = character->codePoint;
        if (codePoint == 0 || codePoint == 0xFFFE || codePoint == 0xFFFF) return std::nullopt;
        if (!isIn10(codePoint)) version = XmlVersion::V1_1;
        text.remove_prefix(character->size);
    }
    return version;
}

void appendXmlText(std::string& out, std::string_view text, XmlVersion version) {
    const bool isBlank = std::ranges::all_of(text, isXmlSpace);
    if (isBlank && !text.empty()) {
        // Readers drop character data that is nothing but white space; a reference keeps it.
        appendReference(out, byteAt(text, 0));
        text.remove_prefix(1);
    }
    while (!text.empty()) {
        const auto character = firstCharacter(text);
        if (!character) return;
        appendCharacter(out, text.substr(0, character->size), character->codePoint, version);
        text.remove_prefix(character->size);
    }
}

}  // namespace halvane
