// SSIDs on a command line.
#ifndef TOOLS_HALVANE_OPTIONS_SSID_ARGUMENT_H
#define TOOLS_HALVANE_OPTIONS_SSID_ARGUMENT_H

#include <string>
#include <variant>

#include "halvane/base/byte_buffer.h"

#include "tools/halvane/options/argument.h"

namespace halvane::tool {

// The 1 to 32 octets of an SSID: those of the argument, or those that it is hexadecimal text of. An
// error does not repeat the argument, for it may be a passphrase at the wrong place.
std::variant<ByteBuffer, UsageError> ssidOf(const std::string& argument, bool isHex);

}  // namespace halvane::tool

#endif
