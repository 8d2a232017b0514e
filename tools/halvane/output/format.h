// The formats that results are printed in.
#ifndef TOOLS_HALVANE_OUTPUT_FORMAT_H
#define TOOLS_HALVANE_OUTPUT_FORMAT_H

#include <optional>
#include <string_view>

namespace halvane::tool {

// Table and CSV are for lists of networks alone.
enum class Format { Text, JSON, JSONLines, PropertyList, Table, CSV };

// The format with this name for --format: "text", "json", "jsonl", "plist", "table", "csv". Absent
// for another name.
std::optional<Format> formatNamed(std::string_view name);

}  // namespace halvane::tool

#endif
