#include "tools/halvane/report/html_writer.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdio>

#include "halvane/base/ascii_internal.h"
#include "halvane/base/utf8_internal.h"

#include "tools/halvane/output/unicode.h"

namespace halvane::tool {

namespace {

constexpr char32_t kFirstIsolate = 0x2068;
constexpr char32_t kEndOfIsolate = 0x2069;
constexpr std::size_t kGroup = 3;  // digits

// The reference that stands for a character; empty if it stands for itself.
std::string_view referenceOf(char character) {
    switch (character) {
        case '&':
            return "&amp;";
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '"':
            return "&quot;";
        case '\'':
            return "&#39;";
        default:
            return {};
    }
}

bool staysInText(char32_t character) {
    return character == '\n' || character == kFirstIsolate || character == kEndOfIsolate ||
           character == kZeroWidthJoiner || character == kEmojiPresentation || isVisible(character);
}

void appendEscaped(std::string& page, char32_t character) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), character < 0x80 ? "\\x%02X" : "\\u{%04X}",
                  static_cast<unsigned>(character));
    page += text.data();
}

// Appends the first character, and returns its size.
std::size_t appendCharacter(std::string& page, std::string_view text) {
    const auto character = firstUtf8Character(text);
    if (!character) {
        page += "\\x";
        appendHexOctet(page, byteAt(text, 0), kUpperHexDigits);
        return 1;
    }
    const std::string_view reference = referenceOf(text.front());
    if (!reference.empty()) {
        page += reference;
    } else if (staysInText(character->codePoint)) {
        page += text.substr(0, character->size);
    } else {
        appendEscaped(page, character->codePoint);
    }
    return character->size;
}

}  // namespace

HtmlWriter& HtmlWriter::operator<<(HtmlText text) {
    std::string_view rest = text.text;
    while (!rest.empty()) rest.remove_prefix(appendCharacter(page_, rest));
    return *this;
}

HtmlWriter& HtmlWriter::operator<<(Fixed number) {
    std::array<char, 64> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), number.value,
                                      std::chars_format::fixed, number.digits);
    page_.append(text.data(), result.ptr);
    return *this;
}

HtmlWriter& HtmlWriter::operator<<(const ShownText& text) {
    std::string_view rest = text.octets();
    bool isMarked = false;
    for (const TextUnit& unit : text.units()) {
        const std::string_view own = rest.substr(0, unit.size);
        const bool isEscape = unit.isAdded && own.starts_with('\\');
        if (isEscape != isMarked) *this << (isEscape ? Markup("<span class=\"esc\">") : "</span>");
        isMarked = isEscape;
        *this << HtmlText{own};
        rest.remove_prefix(unit.size);
    }
    if (isMarked) *this << "</span>";
    return *this;
}

std::string signedText(std::int64_t number) {
    const std::string digits = std::to_string(number);
    return number < 0 ? "\u2212" + digits.substr(1) : digits;
}

std::string groupedText(std::uint64_t number) {
    const std::string digits = std::to_string(number);
    std::string text;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % kGroup == 0) text += "\u202F";
        text += digits[i];
    }
    return text;
}

}  // namespace halvane::tool
