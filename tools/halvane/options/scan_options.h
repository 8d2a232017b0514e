// The options of `halvane scan`.
#ifndef TOOLS_HALVANE_OPTIONS_SCAN_OPTIONS_H
#define TOOLS_HALVANE_OPTIONS_SCAN_OPTIONS_H

#include <optional>
#include <string>

#include "halvane/base/result.h"
#include "halvane/utils/cli.h"

#include "tools/halvane/options/argument.h"
#include "tools/halvane/options/list_options.h"
#include "tools/halvane/output/format.h"

namespace halvane::tool {

struct ScanOptions {
    std::optional<std::string> interface {};  // absent: not typed
    bool isTriggered = false;                 // a fresh list
    Format format = Format::Table;
    bool isFindingsList = false;  // --findings without a format
    ListOptions list{};
};

// The table of options, for the parser.
CLIOption* scanOptions();

// Returns what scanOptions() has read since the last call, and the remaining argument.
Result<ScanOptions, UsageError> takeScanOptions();

}  // namespace halvane::tool

#endif
