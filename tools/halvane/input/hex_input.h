// One element buffer as hexadecimal text.
#ifndef TOOLS_HALVANE_INPUT_HEX_INPUT_H
#define TOOLS_HALVANE_INPUT_HEX_INPUT_H

#include <optional>
#include <string>

#include "halvane/base/byte_buffer.h"

namespace halvane::tool {

// Reads a file ("-" is standard input) of pairs of hexadecimal digits, with white space or colons
// between them as one likes. Absent on failure; `error` then names the file and what is wrong.
std::optional<ByteBuffer> readHexFile(const std::string& path, std::string& error);

}  // namespace halvane::tool

#endif
