// Property lists read from XML text.
//
// The function is pure and may be called from any thread.
#ifndef HALVANE_PLATFORM_PLIST_XML_PROPERTY_LIST_READER_H
#define HALVANE_PLATFORM_PLIST_XML_PROPERTY_LIST_READER_H

#include <cstddef>
#include <optional>
#include <string_view>

#include "halvane/base/export.h"
#include "halvane/base/property_list_value.h"

namespace halvane {

// Why a text is no XML property list.
struct XmlPropertyListError {
    std::size_t offset;       // the byte of the text where that shows
    std::string_view reason;  // static text, for people
};

// The value of an XML property list: whatever xmlPropertyList() writes, and what others write in
// the same format. Absent, and `error` set where it is given, for any other text.
//
//   document  UTF-8, with or without a byte-order mark; XML 1.0 or 1.1, with or without a
//             declaration. A DOCTYPE line is skipped, its internal subset too: no entity is known
//             but the five predefined ones. Comments and processing instructions are skipped.
//   <plist>   holds one value. Its version, if any, is "1.0"; there are no other attributes.
//   <dict>    <key> and value in turn, each key once; their order is kept
//   <array>   values
//   <string>  any text, also in CDATA sections; white space is kept
//   <integer> decimal digits, or "0x" and hexadecimal ones, a sign before them or none, from -2^63
//             to 2^64-1; signed where the signed type holds it; white space around is skipped
//   <real>    decimal digits with one point or none, a sign before them or none, and an exponent
//             ("e-7") or none; or "nan", or "inf" or "infinity" with a sign or none; white space
//             around is skipped
//   <true/>, <false/>  empty
//   <date>    "2026-11-21T07:00:00Z", in the years 1 to 9999
//   <data>    base64 (RFC 4648), padded; white space is skipped
//
// A value may nest kPropertyListMaxDepth levels deep. The time taken is linear in the length of
// the text but for the look-up of keys, and the memory is at most 16 times that length, whatever
// the text is.
HALVANE_EXPORT std::optional<PropertyListValue> propertyListFromXml(
    std::string_view xml, std::optional<XmlPropertyListError>* error = nullptr);

}  // namespace halvane

#endif
