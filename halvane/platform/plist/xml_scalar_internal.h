// The text of the elements that hold one number, date or byte buffer.
#ifndef HALVANE_PLATFORM_PLIST_XML_SCALAR_INTERNAL_H
#define HALVANE_PLATFORM_PLIST_XML_SCALAR_INTERNAL_H

#include <optional>
#include <string_view>
#include <system_error>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/date.h"
#include "halvane/base/number.h"

namespace halvane {

// Reads the text of an <integer> or a <real>. White space around is skipped. `number` is unchanged
// unless the error is 0. The errors are std::errc::invalid_argument and result_out_of_range.
std::errc readXmlInteger(std::string_view text, Number& number);
std::errc readXmlReal(std::string_view text, Number& number);

// Returns what the text of a <date> names: "2026-11-21T07:00:00Z". Absent for any other form.
std::optional<Date> readXmlDate(std::string_view text);

// Returns the bytes of a <data>: base64 (RFC 4648 clause 4). Digits come in groups of four, the
// last one padded with "=", and bits that belong to no byte are 0. White space is skipped. Absent
// for any other form.
std::optional<ByteBuffer> readXmlData(std::string_view text);

}  // namespace halvane

#endif
