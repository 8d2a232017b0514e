// Text as the character data of an XML element.
#ifndef HALVANE_PLATFORM_XML_TEXT_INTERNAL_H
#define HALVANE_PLATFORM_XML_TEXT_INTERNAL_H

#include <optional>
#include <string>
#include <string_view>

namespace halvane {

// Ascending: the later carries whatever the earlier does.
enum class XmlVersion { V1_0, V1_1 };

// The lowest version whose documents can hold `text`; absent for text that is not UTF-8 and for
// the characters U+0000, U+FFFE and U+FFFF, which neither holds (XML 1.0 and 1.1, production 2).
std::optional<XmlVersion> xmlVersionOfText(std::string_view text);

// Appends `text` so that a reader gets it back byte for byte, white space and line ends included.
// REQUIRES: xmlVersionOfText(text) is present and not above `version`.
void appendXmlText(std::string& out, std::string_view text, XmlVersion version);

}  // namespace halvane

#endif
