// How the library prints addresses, byte strings and hex dumps: the one place where it is decided.
//
// Free functions without state; any thread may call them.
#ifndef HALVANE_IE_FANCY_FORMATTING_H
#define HALVANE_IE_FANCY_FORMATTING_H

#include <optional>
#include <string>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/export.h"

namespace halvane::FancyFormatting {

// The first six bytes as "02:1A:2B:3C:4D:5E"; a shorter buffer prints the octets that it has.
HALVANE_EXPORT std::string formattedMAC(const ByteBuffer& address);

// Each byte as itself where it is printable ASCII (32 to 126), else as ".". With the flag the
// buffer's lower-case hexadecimal digits and "  |  " stand before: "616200  |  ab.".
HALVANE_EXPORT std::string formattedData_includeHex(const ByteBuffer& data, bool includeHex);

// "%02X " of each byte, the trailing space included, with a newline between runs of 32 bytes.
HALVANE_EXPORT std::string formattedHexData(const ByteBuffer& data);

// The same of a buffer that may be absent: "(null)" then.
HALVANE_EXPORT std::string formattedHexData(const std::optional<ByteBuffer>& data);

}  // namespace halvane::FancyFormatting

#endif
