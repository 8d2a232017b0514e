// SSIDs on a command line.
#ifndef TOOLS_HALVANE_OPTIONS_SSID_ARGUMENT_H
#define TOOLS_HALVANE_OPTIONS_SSID_ARGUMENT_H

#include <string>

#include "halvane/base/result.h"
#include "halvane/base/ssid.h"

#include "tools/halvane/options/argument.h"

namespace halvane::tool {

// An SSID of 1 to 32 octets. The argument holds the octets, or hexadecimal text of them. An error
// does not repeat the argument, because it may be a misplaced passphrase.
Result<Ssid, UsageError> ssidOf(const std::string& argument, bool isHex);

}  // namespace halvane::tool

#endif
