// The options of `halvane report`.
#ifndef TOOLS_HALVANE_OPTIONS_REPORT_OPTIONS_H
#define TOOLS_HALVANE_OPTIONS_REPORT_OPTIONS_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "halvane/base/result.h"
#include "halvane/utils/cli.h"

#include "tools/halvane/networks/network_filter.h"
#include "tools/halvane/options/argument.h"
#include "tools/halvane/output/whole_file.h"
#include "tools/halvane/report/report_data.h"

namespace halvane::tool {

struct ReportCommandOptions {
    std::vector<std::string> files{};
    std::optional<std::string> output{};  // absent: standard output
    IfThere ifThere = IfThere::Keep;
    NetworkFilter filter{};
    ReportOptions page{};
    std::size_t mostNetworks = 0;
    std::size_t jobs = 1;  // files at once
    bool isQuiet = false;
};

// The table of options, for the parser.
CLIOption* reportOptions();

// Returns what reportOptions() has read since the last call, and the remaining arguments.
Result<ReportCommandOptions, UsageError> takeReportOptions();

}  // namespace halvane::tool

#endif
