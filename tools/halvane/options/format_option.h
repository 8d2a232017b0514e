// The option that chooses a format.
#ifndef TOOLS_HALVANE_OPTIONS_FORMAT_OPTION_H
#define TOOLS_HALVANE_OPTIONS_FORMAT_OPTION_H

#include <optional>

#include "halvane/base/result.h"
#include "halvane/utils/cli.h"

#include "tools/halvane/options/argument.h"
#include "tools/halvane/output/format.h"

namespace halvane::tool {

// The parser stores the text of --format here; null means not typed. All commands share one place,
// because only one runs at a time.
extern const char* gTypedFormat;

// --format as a row of a command's options. `longHelp` describes the formats, and `names` lists
// them.
constexpr CLIOption formatOption(const char* longHelp,
                                 const char* names = "text (default), json, jsonl or plist") {
    return {.type = kCLIString,
            .longName = "format",
            .valuePtr = &gTypedFormat,
            .argName = "FORMAT",
            .flags = kCLIBareName,
            .shortHelp = names,
            .longHelp = longHelp};
}

// Returns the format that was typed since the last call, or text if none was. Formats of lists of
// networks are refused.
Result<Format, UsageError> takeFormat();

// The same for lists of networks, which have all formats. Absent if none was typed.
Result<std::optional<Format>, UsageError> takeListFormat();

}  // namespace halvane::tool

#endif
