// Reads property lists from XML text.
//
// The function is pure and may be called from any thread.
#ifndef HALVANE_PLATFORM_PLIST_XML_PROPERTY_LIST_READER_H
#define HALVANE_PLATFORM_PLIST_XML_PROPERTY_LIST_READER_H

#include <cstddef>
#include <string_view>

#include "halvane/base/export.h"
#include "halvane/base/property_list_value.h"
#include "halvane/base/result.h"

namespace halvane {

// The reason why a text is not an XML property list.
struct XmlPropertyListError {
    std::size_t offset;       // the byte of the text where the error shows
    std::string_view reason;  // static text, for people

    friend bool operator==(const XmlPropertyListError&, const XmlPropertyListError&) = default;
};

// Returns the value of an XML property list. The reader accepts everything that xmlPropertyList()
// writes and what other writers produce in that format, and refuses any other text.
//
//   document  UTF-8, with or without a byte-order mark; XML 1.0 or 1.1, with or without a
//             declaration. A DOCTYPE line and its internal subset are skipped, so only the five
//             predefined entities are known. Comments and processing instructions are skipped.
//   <plist>   holds one value. Its version, if any, is "1.0"; it has no other attributes.
//   <dict>    <key> and value in turn, each key once; their order is kept
//   <array>   values
//   <string>  any text, also in CDATA sections; white space is kept
//   <integer> decimal digits, or "0x" and hexadecimal digits, with an optional sign; from -2^63 to
//             2^64-1; signed if the signed type holds it; white space around is skipped
//   <real>    decimal digits with an optional sign, point and exponent ("e-7"); or "nan"; or "inf"
//             or "infinity" with an optional sign; white space around is skipped
//   <true/>, <false/>  empty
//   <date>    "2026-11-21T07:00:00Z", in the years 1 to 9999
//   <data>    base64 (RFC 4648), padded; white space is skipped
//
// A value may nest kPropertyListMaxDepth levels deep. Except for finding keys, the time is linear
// in the length of the text. The memory is at most 16 times that length, whatever the text is.
HALVANE_EXPORT Result<PropertyListValue, XmlPropertyListError> propertyListFromXml(
    std::string_view xml);

}  // namespace halvane

#endif
