#include "tools/halvane/options/scan_options.h"

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "tools/halvane/networks/network_columns.h"

namespace halvane::tool {

namespace {

std::int32_t gTypedTrigger = 0;

const CLIOption kOwnRows[] = {
    {.type = kCLIBoolean,
     .longName = "trigger",
     .valuePtr = &gTypedTrigger,
     .flags = kCLINoValue,
     .shortHelp = "look around now; takes some seconds, and rights"},
};

const CLIOption kLastRows[] = {
    {.type = kCLIArgument,
     .longName = "INTERFACE",
     .flags = kCLIOptionalValue,
     .shortHelp = "whose list (default: the first in managed mode)"},
    {.type = kCLISection,
     .shortHelp = "EXAMPLES",
     .longHelp = "halvane scan\n"
                 "sudo halvane scan --trigger wlan0\n"
                 "halvane scan --band=5 --min-signal=-67 --sort=channel\n"
                 "halvane scan --format=jsonl | jq -r .mac"},
    {.type = kCLISection,
     .shortHelp = "EXIT STATUS",
     .longHelp = "0 done, also where no network passes the filter; 1 there is no list, or the\n"
                 "output could not be written; 2 usage."},
    {.type = kCLIEnd},
};

std::vector<CLIOption> allOptions() {
    std::vector<CLIOption> options;
    for (const std::span<const CLIOption> rows :
         {std::span<const CLIOption>(kOwnRows), filterOptions(), showOptions(), mannerOptions(),
          std::span<const CLIOption>(kLastRows)}) {
        options.insert(options.end(), rows.begin(), rows.end());
    }
    return options;
}

}  // namespace

CLIOption* scanOptions() {
    static std::vector<CLIOption> options = allOptions();
    return options.data();
}

Result<ScanOptions, UsageError> takeScanOptions() {
    ScanOptions options;
    options.isTriggered = std::exchange(gTypedTrigger, 0) != 0;
    const auto arguments = takeArguments();
    auto list = takeListOptions(ListKind::Scan);
    if (!list) return Unexpected(list.error());
    if (arguments.size() > 1) return Unexpected(UsageError{"one interface at a time"});
    if (!arguments.empty()) options.interface = arguments.front();
    options.list = std::move(*list);
    options.format = options.list.format.value_or(Format::Table);
    options.isFindingsList = takeFindings(options.list);
    if (options.isFindingsList) {
        auto error = tableOptionBeside("--findings", options.list, false);
        if (error) return Unexpected(std::move(*error));
    }
    return options;
}

}  // namespace halvane::tool
