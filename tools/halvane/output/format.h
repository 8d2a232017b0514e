// The formats that results are printed in.
#ifndef TOOLS_HALVANE_OUTPUT_FORMAT_H
#define TOOLS_HALVANE_OUTPUT_FORMAT_H

#include <optional>
#include <string_view>

namespace halvane::tool {

enum class Format { Text, JSON, JSONLines, PropertyList };

// The format with this name for --format: "text", "json", "jsonl", "plist". Absent for another
// name.
std::optional<Format> formatNamed(std::string_view name);

}  // namespace halvane::tool

#endif
