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

namespace halvane {

// How deep a property list may nest as XML: the root is at level 1, what it holds at level 2.
inline constexpr int kXmlPropertyListMaxDepth = kPropertyListMaxDepth;

// Why a value has no XML form.
struct XmlPropertyListRefusal {
    std::string_view reason;            // static text, for people: what is somewhere in the value
    std::optional<char32_t> character;  // where it is a character
};

// The value as an XML property list in UTF-8: a declaration of XML 1.0, no DOCTYPE line, and one
// <plist version="1.0">, indented with tabs, with a newline at the end. Equal values whose
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
// Absent, and `refusal` set where it is given, where the value has no such form: for a null or a
// PropertyListObject anywhere inside; a string or key that is not UTF-8, or holds a character that
// XML 1.0 does not have, not even as a reference, which are U+0000 to U+001F but for tab, newline
// and carriage return, U+FFFE and U+FFFF; or a value deeper than kXmlPropertyListMaxDepth.
HALVANE_EXPORT std::optional<std::string> xmlPropertyList(
    const PropertyListValue& value, std::optional<XmlPropertyListRefusal>* refusal = nullptr);

}  // namespace halvane

#endif
