// The options of `halvane watch`.
#ifndef TOOLS_HALVANE_OPTIONS_WATCH_OPTIONS_H
#define TOOLS_HALVANE_OPTIONS_WATCH_OPTIONS_H

#include <chrono>
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

struct WatchOptions {
    std::vector<std::string> interfaces{};
    std::optional<std::chrono::milliseconds> duration{};
    std::optional<std::uint64_t> count{};  // frames
    std::optional<std::string> file{};     // that keeps the frames
    Format format = Format::Table;
    bool isFindingsList = false;  // --findings without a format
    ListOptions list{};
};

// The table of options, for the parser.
CLIOption* watchOptions();

// Returns what watchOptions() has read since the last call, and the remaining arguments.
Result<WatchOptions, UsageError> takeWatchOptions();

}  // namespace halvane::tool

#endif
