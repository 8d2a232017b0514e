// The first steps of an XML reader: the declaration and the line ends.
#ifndef HALVANE_PLATFORM_PLIST_XML_SOURCE_INTERNAL_H
#define HALVANE_PLATFORM_PLIST_XML_SOURCE_INTERNAL_H

#include <cstddef>
#include <string>
#include <string_view>

#include "halvane/base/result.h"
#include "halvane/platform/plist/xml_text_internal.h"

namespace halvane {

struct XmlDeclaration {
    XmlVersion version = XmlVersion::V1_0;
    std::size_t size = 0;  // in bytes, including a byte-order mark before it
};

// Returns the declaration at the beginning of `text`, or the default one if there is none. Refuses
// a malformed declaration, a version other than 1.0 and 1.1, and an encoding other than UTF-8.
Result<XmlDeclaration, XmlRefusal> xmlDeclaration(std::string_view text);

// Whether `text` has line ends other than a plain newline.
bool hasOtherLineEnds(std::string_view text, XmlVersion version);

// Returns `text` with every line end as one newline (XML 1.0 and 1.1, clause 2.11). Line ends are
// carriage returns, with or without a newline, and in version 1.1 also U+0085 and U+2028.
std::string withPlainLineEnds(std::string_view text, XmlVersion version);

// Returns the offset in `text` of the byte at `offset` of withPlainLineEnds(text, version).
std::size_t offsetBeforePlainLineEnds(std::string_view text, XmlVersion version,
                                      std::size_t offset);

}  // namespace halvane

#endif
