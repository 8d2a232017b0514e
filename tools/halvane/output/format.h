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

// As --format names it: "text", "json", "jsonl", "plist". Absent for another name.
std::optional<Format> formatNamed(std::string_view name);

// Where the parser leaves the text of --format; null where it was not typed. One place does for all
// commands, since one runs at a time.
extern const char* gTypedFormat;

// --format as a row of a command's options. `longHelp` tells what each format is there, `names`
// which there are.
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

// The format that was typed since the last call; text where none was.
Result<Format, UsageError> takeFormat();

}  // namespace halvane::tool

#endif
