// Prints the BSS configuration that the options make.
#include <string>

#include "halvane/model/bss_config.h"
#include "halvane/utils/cli.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/options/argument.h"
#include "tools/halvane/options/config_options.h"
#include "tools/halvane/options/format_option.h"
#include "tools/halvane/output/config_json.h"
#include "tools/halvane/output/format.h"
#include "tools/halvane/output/message.h"
#include "tools/halvane/output/print_records.h"
#include "tools/halvane/output/standard_output.h"

namespace halvane::tool {

namespace {

void print(const HalvaneBSSConfig& configuration, Format format) {
    if (format != Format::Text) {
        return printRecord(configuration, configuration.skeletonRepresentation(), format);
    }
    put(configuration.description());
}

}  // namespace

CLIOption gConfigOptions[] = {
    HALVANE_CONFIG_OPTIONS,
    formatOption("json, plist: one document; jsonl: one line; plist: the skeleton."),
    {.type = kCLISection,
     .shortHelp = "EXIT STATUS",
     .longHelp = "0 success; 1 the passphrase cannot be read, is too long, or makes no key, or\n"
                 "writing failed; 2 usage error."},
    {.type = kCLIEnd},
};

int configCommand() {
    const auto words = takeArguments();
    const auto options = takeConfigOptions();
    const auto format = takeFormat();
    // The message does not repeat the argument, because it may be the passphrase.
    if (!words.empty()) return refuse("config", "takes options only");
    if (!options) return refuse("config", options.error());
    if (!format) return refuse("config", format.error());
    const auto configuration = configurationOf(*options);
    if (!configuration) {
        complain("config: " + configuration.error());
        return kExitFailed;
    }
    print(*configuration, *format);
    return kExitDone;
}

}  // namespace halvane::tool
