// The options of `halvane decode`.
#ifndef TOOLS_HALVANE_OPTIONS_DECODE_OPTIONS_H
#define TOOLS_HALVANE_OPTIONS_DECODE_OPTIONS_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "halvane/base/result.h"
#include "halvane/utils/cli.h"

#include "tools/halvane/options/argument.h"
#include "tools/halvane/options/list_options.h"
#include "tools/halvane/output/format.h"

namespace halvane::tool {

struct DecodeOptions {
    std::vector<std::string> files;
    Format format = Format::Table;
    ListOptions list{};
    bool isPerFrame = false;
    bool isHex = false;
    bool isExplained = false;
    bool isFindingsList = false;                // --findings without a format
    std::size_t jobs = 1;                       // files at once
    std::optional<std::uint16_t> capabilities;  // of a hexadecimal element buffer
};

// The table of options, for the parser.
CLIOption* decodeOptions();

// Returns what decodeOptions() has read since the last call, and the remaining arguments.
Result<DecodeOptions, UsageError> takeDecodeOptions();

}  // namespace halvane::tool

#endif
