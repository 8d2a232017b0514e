// Files that are written whole or not at all.
//
// A free function; any thread may call it.
#ifndef TOOLS_HALVANE_OUTPUT_WHOLE_FILE_H
#define TOOLS_HALVANE_OUTPUT_WHOLE_FILE_H

#include <optional>
#include <string>
#include <string_view>

namespace halvane::tool {

enum class IfThere { Keep, Replace };

// Returns why a file cannot be written under this name because one is there already; absent if that
// is no hindrance. What is no regular file (a device, a pipe) is not replaced but written to.
std::optional<std::string> hindranceOf(const std::string& path, IfThere ifThere);

// Writes a temporary file in the same folder and gives it its name, so that no reader ever sees a
// part of it, and so that a failure leaves what was there. Returns what went wrong, with the path.
std::optional<std::string> writeWholeFile(const std::string& path, std::string_view text,
                                          IfThere ifThere);

}  // namespace halvane::tool

#endif
