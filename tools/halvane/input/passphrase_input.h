// Passphrases, which are never arguments: other users of the machine see those.
#ifndef TOOLS_HALVANE_INPUT_PASSPHRASE_INPUT_H
#define TOOLS_HALVANE_INPUT_PASSPHRASE_INPUT_H

#include <optional>
#include <string>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/error.h"
#include "halvane/base/result.h"

namespace halvane::tool {

// The first line of standard input, without the newline, or CR LF, that ends it; nothing behind it
// is read. Where standard input is a terminal, the line is asked for on /dev/tty, which shows
// nothing of it; signals that end or stop the program meanwhile find the terminal as it was.
//
// The octets are wiped when the last copy of the buffer goes. An error tells why there are none: no
// line, an empty one, one that is longer than any passphrase, one with a NUL in it, a failure of
// the system. A line that is too long is read to its end from a terminal only.
Result<ByteBuffer, std::string> readPassphrase();

// Why no pre-shared key is made of the passphrase, although there is an SSID; it tells nothing else
// of it. `error` is that of HalvaneBSSConfig::wpaPasswordHash.
std::string passphraseProblem(const ByteBuffer& passphrase, const std::optional<Error>& error);

}  // namespace halvane::tool

#endif
