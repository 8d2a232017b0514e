#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <system_error>
#include <utility>

#include "halvane/base/utf8_internal.h"
#include "halvane/platform/plist/xml_text_internal.h"

namespace halvane {

namespace {

// Characters that no version allows, not even as references. UTF-8 itself excludes surrogates.
bool isInNone(char32_t codePoint) {
    return codePoint == 0 || codePoint == 0xFFFE || codePoint == 0xFFFF;
}

bool isIn10(char32_t codePoint) {
    return codePoint >= 0x20 || isXmlSpace(codePoint);
}

// XML 1.1 production 2a: characters that a document holds only as references.
bool isRestrictedIn11(char32_t codePoint) {
    return !isIn10(codePoint) || (codePoint >= 0x7F && codePoint <= 0x9F && codePoint != 0x85);
}

bool isLiteral(char32_t codePoint, XmlVersion version) {
    if (isInNone(codePoint)) return false;
    return version == XmlVersion::V1_0 ? isIn10(codePoint) : !isRestrictedIn11(codePoint);
}

// Whether the byte is a whole character in either version, as most bytes of most documents are.
constexpr bool isPlain(std::uint8_t byte) {
    const bool isPrinting = static_cast<std::uint8_t>(byte - 0x20) < 0x5F;
    return isPrinting | (byte == '\t') | (byte == '\n') | (byte == '\r');
}

// The same, for a byte that is also written unchanged.
constexpr bool isVerbatim(std::uint8_t byte) {
    const bool isMeant = (byte != '&') & (byte != '<') & (byte != '>') & (byte != '\r');
    return isPlain(byte) & isMeant;
}

// The results of a predicate for all bytes, which a short text needs one by one.
template <bool (*kHolds)(std::uint8_t)>
constexpr auto kHoldsFor = [] {
    std::array<bool, 256> table{};
    for (std::size_t i = 0; i < table.size(); ++i) table[i] = kHolds(static_cast<std::uint8_t>(i));
    return table;
}();

// Returns the offset of the first byte from `from` on for which the predicate is false; the size of
// `text` if there is none. It checks whole blocks without a branch per byte, which compilers turn
// into vector code.
template <bool (*kHolds)(std::uint8_t)>
std::size_t firstOther(std::string_view text, std::size_t from) {
    constexpr std::size_t kBlock = 64;
    const auto holdsAt = [text](std::size_t offset) {
        return kHoldsFor<kHolds>[byteAt(text, offset)];
    };
    for (; text.size() - from >= kBlock && holdsAt(from); from += kBlock) {
        std::uint8_t holds = 1;
        for (std::size_t i = 0; i < kBlock; ++i) holds &= kHolds(byteAt(text, from + i));
        if (holds == 0) break;
    }
    while (from < text.size() && holdsAt(from)) ++from;
    return from;
}

void appendReference(std::string& out, char32_t codePoint) {
    out += "&#" + std::to_string(static_cast<std::uint32_t>(codePoint)) + ";";
}

void appendCharacter(std::string& out, std::string_view bytes, char32_t codePoint) {
    if (codePoint == '&') {
        out += "&amp;";
    } else if (codePoint == '<') {
        out += "&lt;";
    } else if (codePoint == '>') {  // "]]>" must not stand in character data
        out += "&gt;";
    } else if (codePoint == '\r') {  // a reader would take it for a newline
        appendReference(out, codePoint);
    } else {
        out += bytes;
    }
}

constexpr std::array<std::pair<std::string_view, char>, 5> kEntities = {
    {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}}};

// `name` is the text between "&" and ";".
std::optional<char32_t> referencedCharacter(std::string_view name, XmlVersion version) {
    if (!name.starts_with('#')) {
        const auto row =
            std::ranges::find(kEntities, name, [](auto& entity) { return entity.first; });
        return row == kEntities.end() ? std::nullopt : std::optional<char32_t>(row->second);
    }
    const bool isHex = name.starts_with("#x");
    const std::string_view digits = name.substr(isHex ? 2 : 1);
    std::uint32_t value = 0;
    const char* const end = digits.data() + digits.size();
    const auto result = std::from_chars(digits.data(), end, value, isHex ? 16 : 10);
    if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
    const bool isSurrogate = value >= 0xD800 && value <= 0xDFFF;
    if (isSurrogate || value > 0x10FFFF || isInNone(value)) return std::nullopt;
    if (version == XmlVersion::V1_0 && !isIn10(value)) return std::nullopt;
    return value;
}

}  // namespace

bool isXmlBlank(std::string_view text) {
    return std::ranges::all_of(text, isXmlSpace);
}

std::optional<XmlTextRefusal> refusedXmlText(std::string_view text) {
    for (;;) {
        text.remove_prefix(firstOther<isPlain>(text, 0));
        if (text.empty()) return std::nullopt;
        const auto character = firstUtf8Character(text);
        if (!character) return XmlTextRefusal{std::nullopt};
        if (!isLiteral(character->codePoint, XmlVersion::V1_0)) {
            return XmlTextRefusal{character->codePoint};
        }
        text.remove_prefix(character->size);
    }
}

std::optional<XmlRefusal> refusedXmlCharacter(std::string_view document, XmlVersion version) {
    for (std::size_t i = 0; i < document.size();) {
        i = firstOther<isPlain>(document, i);
        if (i == document.size()) break;
        const auto character = firstUtf8Character(document.substr(i));
        if (!character) return XmlRefusal{i, "not UTF-8"};
        if (!isLiteral(character->codePoint, version)) {
            return XmlRefusal{i, "character that XML does not allow"};
        }
        i += character->size;
    }
    return std::nullopt;
}

void appendXmlText(std::string& out, std::string_view text) {
    if (!text.empty() && isXmlBlank(text)) {
        // Readers drop character data that is only white space. A reference preserves it.
        appendReference(out, byteAt(text, 0));
        text.remove_prefix(1);
    }
    while (!text.empty()) {
        const std::size_t verbatim = firstOther<isVerbatim>(text, 0);
        out.append(text.substr(0, verbatim));
        text.remove_prefix(verbatim);
        if (text.empty()) return;
        const auto character = firstUtf8Character(text);
        if (!character) return;
        appendCharacter(out, text.substr(0, character->size), character->codePoint);
        text.remove_prefix(character->size);
    }
}

std::optional<XmlRefusal> appendCharacterData(std::string& out, std::string_view data,
                                              XmlVersion version) {
    std::size_t copied = 0;
    for (std::size_t i = 0; i < data.size(); ++i) {
        if (data[i] == '>' && data.substr(0, i).ends_with("]]")) {
            return XmlRefusal{i - 2, "\"]]>\" in text"};
        }
        if (data[i] != '&') continue;
        out.append(data, copied, i - copied);
        const std::size_t end = data.find(';', i);
        if (end == std::string_view::npos) return XmlRefusal{i, "\"&\" without a reference"};
        const auto character = referencedCharacter(data.substr(i + 1, end - i - 1), version);
        if (!character) return XmlRefusal{i, "reference to nothing known"};
        appendUtf8(out, *character);
        copied = end + 1;
        i = end;
    }
    out.append(data, copied);
    return std::nullopt;
}

}  // namespace halvane
