// The daemon's configuration file. Its lines are
//
//   key = value
//   # a comment
//
// or empty. White space around keys and values does not count, and a value ends with its line: '#'
// begins a comment at the start of a line only. Each key may stand in the file once; keys that are
// left out have the values of Settings.
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANED_SETTINGS_SETTINGS_FILE_H
#define TOOLS_HALVANED_SETTINGS_SETTINGS_FILE_H

#include <cstddef>
#include <string>
#include <string_view>

#include "halvane/base/result.h"

#include "tools/halvaned/settings/settings.h"

namespace halvane::hosting {

// Where the file is unless the command line names another.
inline constexpr const char* kSettingsFile = "/etc/halvane/halvaned.conf";

inline constexpr std::size_t kLargestSettingsFile = 65536;  // bytes

// Reads a file's text. The error is for people, and names the file, the line, and what is allowed:
// "/etc/halvane/halvaned.conf:3: stations has to be a number from 1 to 2007". `file` is the name
// for it.
Result<Settings, std::string> settingsFromText(std::string_view text, const std::string& file);

enum class IfMissing { UseDefaults, Fail };

// Reads a file.
Result<Settings, std::string> readSettings(const std::string& path, IfMissing ifMissing);

}  // namespace halvane::hosting

#endif
