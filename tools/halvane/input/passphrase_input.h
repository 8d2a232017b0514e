// Reads passphrases. They are never arguments, because other users of the machine can see those.
#ifndef TOOLS_HALVANE_INPUT_PASSPHRASE_INPUT_H
#define TOOLS_HALVANE_INPUT_PASSPHRASE_INPUT_H

#include <optional>
#include <string>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/error.h"
#include "halvane/base/result.h"

namespace halvane::tool {

// Reads the first line of standard input, without its newline or CR LF, and nothing after it. If
// standard input is a terminal, asks for the line on /dev/tty without echo. Signals that end or
// stop the program meanwhile find the terminal restored.
//
// The octets are wiped when the last copy of the buffer goes. An error states why there are none:
// the line is missing, empty, longer than any passphrase, or has a NUL in it, or the system failed.
// A line that is too long is read to its end only from a terminal.
Result<ByteBuffer, std::string> readPassphrase();

// The text of why the passphrase makes no pre-shared key although there is an SSID. It reveals
// nothing else about the passphrase. `error` is that of HalvaneBSSConfig::wpaPasswordHash.
std::string passphraseProblem(const ByteBuffer& passphrase, const std::optional<Error>& error);

}  // namespace halvane::tool

#endif
