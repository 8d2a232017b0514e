// What an XML reader does before it looks at markup: the declaration, and line ends.
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
    std::size_t size = 0;  // in bytes, with a byte-order mark before it
};

// The declaration that `text` begins with; the default one where there is none. A refusal for
// one that is malformed, of a version other than 1.0 and 1.1, or of an encoding
// other than UTF-8.
Result<XmlDeclaration, XmlRefusal> xmlDeclaration(std::string_view text);

// Whether `text` has line ends that are no plain newlines.
bool hasOtherLineEnds(std::string_view text, XmlVersion version);

// `text` with every line end as one newline (XML 1.0 and 1.1, clause 2.11): carriage returns, with
// a newline or without, and in version 1.1 also U+0085 and U+2028.
std::string withPlainLineEnds(std::string_view text, XmlVersion version);

// Where the byte at `offset` of withPlainLineEnds(text, version) was in `text`.
std::size_t offsetBeforePlainLineEnds(std::string_view text, XmlVersion version,
                                      std::size_t offset);

}  // namespace halvane

#endif
