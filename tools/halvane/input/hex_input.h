// Hexadecimal text of files.
#ifndef TOOLS_HALVANE_INPUT_HEX_INPUT_H
#define TOOLS_HALVANE_INPUT_HEX_INPUT_H

#include <string>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/result.h"

namespace halvane::tool {

// Returns the text of a file ("-" is standard input) of at most 1 MiB. An error names the file and
// the fault; `tooLong` is the fault of a longer one.
Result<std::string, std::string> readTextFile(
    const std::string& path, const char* tooLong = "too long for an element buffer");

// Reads one element buffer from a file ("-" is standard input) of pairs of hexadecimal digits, with
// any white space or colons between them. An error names the file and the fault.
Result<ByteBuffer, std::string> readHexFile(const std::string& path);

}  // namespace halvane::tool

#endif
