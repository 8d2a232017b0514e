// The options of `halvane decode`.
#ifndef TOOLS_HALVANE_OPTIONS_DECODE_OPTIONS_H
#define TOOLS_HALVANE_OPTIONS_DECODE_OPTIONS_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "halvane/base/mac_address.h"
#include "halvane/base/result.h"
#include "halvane/utils/cli.h"

#include "tools/halvane/options/argument.h"
#include "tools/halvane/output/format.h"

namespace halvane::tool {

struct DecodeOptions {
    std::vector<std::string> files;
    Format format = Format::Text;
    bool isPerFrame = false;
    bool isHex = false;
    bool isExplained = false;
    std::optional<std::uint16_t> capabilities;  // of a hexadecimal element buffer
    std::optional<MacAddress> bssid;
    std::optional<std::string> ssid;
};

extern CLIOption gDecodeOptions[];

// Returns what gDecodeOptions has read since the last call, and the remaining arguments.
Result<DecodeOptions, UsageError> takeDecodeOptions();

}  // namespace halvane::tool

#endif
