// SSIDs on a command line.
#ifndef TOOLS_HALVANE_SSID_ARGUMENT_H
#define TOOLS_HALVANE_SSID_ARGUMENT_H

#include <string>
#include <variant>

#include "halvane/base/byte_buffer.h"

#include "tools/halvane/argument.h"

namespace halvane::tool {

// The 1 to 32 octets of an SSID: those of the argument, or those that it is hexadecimal text of.
std::variant<ByteBuffer, UsageError> ssidOf(const std::string& argument, bool isHex);

}  // namespace halvane::tool

#endif
