// The formats that results are printed in, and the option that chooses one.
#ifndef TOOLS_HALVANE_OUTPUT_FORMAT_H
#define TOOLS_HALVANE_OUTPUT_FORMAT_H

#include <optional>
#include <string_view>

#include "halvane/base/result.h"
#include "halvane/utils/cli.h"

#include "tools/halvane/options/argument.h"

namespace halvane::tool {

enum class Format { Text, JSON, JSONLines, PropertyList };

// The format with this name for --format: "text", "json", "jsonl", "plist". Absent for another
// name.
std::optional<Format> formatNamed(std::string_view name);

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

// Returns the format that was typed since the last call, or text if none was.
Result<Format, UsageError> takeFormat();

}  // namespace halvane::tool

#endif
