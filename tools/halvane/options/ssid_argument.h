// SSIDs on a command line.
#ifndef TOOLS_HALVANE_OPTIONS_SSID_ARGUMENT_H
#define TOOLS_HALVANE_OPTIONS_SSID_ARGUMENT_H

#include <string>

#include "halvane/base/result.h"
#include "halvane/base/ssid.h"

#include "tools/halvane/options/argument.h"

namespace halvane::tool {

// An SSID of 1 to 32 octets: those of the argument, or those that it is hexadecimal text of. An
// error does not repeat the argument, for it may be a passphrase at the wrong place.
Result<Ssid, UsageError> ssidOf(const std::string& argument, bool isHex);

}  // namespace halvane::tool

#endif
