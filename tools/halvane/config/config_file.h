// Files that hold BSS configurations.
#ifndef TOOLS_HALVANE_CONFIG_CONFIG_FILE_H
#define TOOLS_HALVANE_CONFIG_CONFIG_FILE_H

#include <string>
#include <vector>

#include "halvane/base/result.h"
#include "halvane/model/bss_config.h"

namespace halvane::tool {

// Reads the XML property list of one configuration, or of an array of them, from a file or from
// standard input ("-"). An error states why that is impossible, and names the input.
Result<std::vector<HalvaneBSSConfig>, std::string> readConfigurations(const std::string& path);

}  // namespace halvane::tool

#endif
