// Property lists as XML text.
//
// The functions are pure and may be called from any thread.
#ifndef HALVANE_PLATFORM_PLIST_XML_PROPERTY_LIST_H
#define HALVANE_PLATFORM_PLIST_XML_PROPERTY_LIST_H

#include <optional>
#include <string>
#include <string_view>

#include "halvane/base/export.h"
#include "halvane/base/property_list_value.h"
#include "halvane/base/result.h"

namespace halvane {

// The greatest depth of a property list in XML. The root is at level 1, its members are at level 2.
inline constexpr int kXmlPropertyListMaxDepth = kPropertyListMaxDepth;

// The reason why a value has no XML form.
struct XmlPropertyListRefusal {
    std::string_view reason;            // what the value contains, for people; static text
    std::optional<char32_t> character;  // set if the reason is a character

    friend bool operator==(const XmlPropertyListRefusal&, const XmlPropertyListRefusal&) = default;
};

// Returns the value as an XML property list in UTF-8: an XML 1.0 declaration, no DOCTYPE line, and
// one <plist version="1.0">, indented with tabs, with a newline at the end. Equal values whose
// dictionaries have the same order of insertion give the same text.
//
//   dictionary  <dict>, or <dict/> when empty; <key> and value, in order of insertion
//   array       <array>, or <array/> when empty
//   string      <string>
//   integer     <integer>, over the whole signed and unsigned 64-bit range
//   real        <real>, the shortest form that reads back equal; "nan", "+infinity", "-infinity"
//   boolean     <true/> or <false/>
//   date        <date>, "2026-11-21T07:00:00Z"
//   data        <data>, base64 (RFC 4648) in lines of at most 76 characters
//
// Strings and keys read back byte for byte.
//
// Refuses a value that has no such form. A value has no such form if
// - it contains a null or a PropertyListObject
// - a string or key is not UTF-8, or holds a character that XML 1.0 lacks even as a reference:
//   U+0000 to U+001F except tab, newline and carriage return, U+FFFE and U+FFFF
// - it is deeper than kXmlPropertyListMaxDepth.
HALVANE_EXPORT Result<std::string, XmlPropertyListRefusal> xmlPropertyList(
    const PropertyListValue& value);

}  // namespace halvane

#endif
