// Configurations of a network that are not what their options look like.
#ifndef TOOLS_HALVANE_OPTIONS_SECURITY_CHECK_H
#define TOOLS_HALVANE_OPTIONS_SECURITY_CHECK_H

#include <optional>

#include "tools/halvane/options/argument.h"
#include "tools/halvane/options/config_options.h"

namespace halvane::tool {

// Returns why a network would not be protected as it seems: it has a passphrase that no word of
// security uses, or WPA or WPA2 with a pre-shared key and no passphrase. Absent if neither holds.
std::optional<UsageError> unprotectedBy(const ConfigOptions& options);

}  // namespace halvane::tool

#endif
