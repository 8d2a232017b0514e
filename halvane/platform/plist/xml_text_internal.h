// Text as the character data of an XML element.
#ifndef HALVANE_PLATFORM_PLIST_XML_TEXT_INTERNAL_H
#define HALVANE_PLATFORM_PLIST_XML_TEXT_INTERNAL_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace halvane {

enum class XmlVersion { V1_0, V1_1 };

// The reason why a text is refused as XML, and the offset of the first bad byte.
struct XmlRefusal {
    std::size_t offset;
    std::string_view reason;  // static text
};

// The reason why a text cannot stand in a document.
struct XmlTextRefusal {
    std::optional<char32_t> character;  // absent: the text is not UTF-8
};

constexpr bool isXmlSpace(char32_t codePoint) {
    return codePoint == ' ' || codePoint == '\t' || codePoint == '\n' || codePoint == '\r';
}

// Whether `text` consists of white space alone.
bool isXmlBlank(std::string_view text);

// Returns the reason why `text` cannot stand in any XML 1.0 document; absent if it can. The reason
// is invalid UTF-8, or a character that production 2 excludes: U+0000 to U+001F except tab, newline
// and carriage return, U+FFFE and U+FFFF. References cannot express these either.
std::optional<XmlTextRefusal> refusedXmlText(std::string_view text);

// Returns the reason why `document` is not a document of `version` in UTF-8; absent if it is one.
// The reason is invalid UTF-8, or a character that the version allows only as a reference, or not
// at all.
std::optional<XmlRefusal> refusedXmlCharacter(std::string_view document, XmlVersion version);

// Appends `text` to an XML 1.0 document so that a reader gets back every byte, white space and line
// ends included.
// REQUIRES: refusedXmlText(text) is absent.
void appendXmlText(std::string& out, std::string_view text);

// Appends the text that `data` represents: character data between two pieces of markup, with
// normalised line ends. Refuses "]]>" and every reference except those to characters that the
// version allows and to the five predefined entities. The text before the refused part is then
// already appended.
// REQUIRES: refusedXmlCharacter(data, version) is absent.
std::optional<XmlRefusal> appendCharacterData(std::string& out, std::string_view data,
                                              XmlVersion version);

}  // namespace halvane

#endif
