// The one place that decides how the library prints addresses, byte strings and hex dumps.
//
// Free functions without state; any thread may call them.
#ifndef HALVANE_IE_FANCY_FORMATTING_H
#define HALVANE_IE_FANCY_FORMATTING_H

#include <optional>
#include <string>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"

namespace halvane::FancyFormatting {

// Returns the first six bytes as "02:1A:2B:3C:4D:5E", or all bytes of a shorter buffer.
HALVANE_EXPORT std::string formattedMAC(const ByteBuffer& address);

// Prints each byte as a character if it is printable ASCII (32 to 126), otherwise as ".". With
// `includeHex` the bytes in lower-case hexadecimal digits and "  |  " come first: "616200  |  ab.".
HALVANE_EXPORT std::string formattedData_includeHex(const ByteBuffer& data, bool includeHex);

// Prints each byte as "%02X ", including the trailing space, with a newline after every 32 bytes.
HALVANE_EXPORT std::string formattedHexData(const ByteBuffer& data);

// The same; returns "(null)" if the buffer is absent.
HALVANE_EXPORT std::string formattedHexData(const std::optional<ByteBuffer>& data);

}  // namespace halvane::FancyFormatting

#endif
