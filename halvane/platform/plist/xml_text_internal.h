// Text as the character data of an XML element.
#ifndef HALVANE_PLATFORM_PLIST_XML_TEXT_INTERNAL_H
#define HALVANE_PLATFORM_PLIST_XML_TEXT_INTERNAL_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace halvane {

enum class XmlVersion { V1_0, V1_1 };

// Why a text is not taken for XML, and from which byte on.
struct XmlRefusal {
    std::size_t offset;
    std::string_view reason;  // static text
};

// Why a text has no place in a document.
struct XmlTextRefusal {
    std::optional<char32_t> character;  // absent: the text is not UTF-8
};

constexpr bool isXmlSpace(char32_t codePoint) {
    return codePoint == ' ' || codePoint == '\t' || codePoint == '\n' || codePoint == '\r';
}

// Whether `text` is nothing but white space.
bool isXmlBlank(std::string_view text);

// What keeps `text` out of every document of XML 1.0: bytes that are no UTF-8, or a character
// that production 2 does not have, U+0000 to U+001F but for tab, newline and carriage return,
// U+FFFE and U+FFFF. Not even a reference stands for these. Absent: nothing.
std::optional<XmlTextRefusal> refusedXmlText(std::string_view text);

// What keeps `document` from being a document of `version` in UTF-8: bytes that are no UTF-8, or a
// character that the version knows only as a reference, or not at all. Absent: nothing.
std::optional<XmlRefusal> refusedXmlCharacter(std::string_view document, XmlVersion version);

// Appends `text` to a document of XML 1.0 so that a reader gets it back byte for byte, white space
// and line ends included.
// REQUIRES: refusedXmlText(text) is absent.
void appendXmlText(std::string& out, std::string_view text);

// Appends the text that `data` stands for: character data between two pieces of markup, line ends
// normalised. Refuses "]]>", and every reference but those to characters that the version allows
// and to the five predefined entities; what stands before was appended then.
// REQUIRES: refusedXmlCharacter(data, version) is absent.
std::optional<XmlRefusal> appendCharacterData(std::string& out, std::string_view data,
                                              XmlVersion version);

}  // namespace halvane

#endif
