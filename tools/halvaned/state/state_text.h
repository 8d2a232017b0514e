// The daemon's state as an XML property list, a dictionary:
//
//   Version     integer: 1
//   Interfaces  dictionary: by name, a dictionary for each interface:
//     Configurations  array of BSS configurations (docs/protocol.md)
//     Role            string; left out if no client has set one
//     Enabled         boolean
//     Started         boolean
//
// Pure functions; any thread may call them.
#ifndef TOOLS_HALVANED_STATE_STATE_TEXT_H
#define TOOLS_HALVANED_STATE_STATE_TEXT_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "halvane/base/result.h"

#include "tools/halvaned/state/daemon_state.h"

namespace halvane::hosting {

inline constexpr std::int64_t kStateVersion = 1;
inline constexpr std::size_t kLargestState = 16777216;  // bytes

// Reads a state. The error names the place: "Interfaces: wlan0: Enabled is no boolean". Refuses
// other keys and other versions, keys that are missing, names that no interface can have, and
// configurations without an SSID of 1 to 32 bytes.
Result<DaemonState, std::string> stateFromText(std::string_view xml);

// Returns a text that reads back as an equal state. The error says what no such text can hold: more
// than kLargestState bytes, a name or a role that is no UTF-8 or that stateFromText() refuses. The
// caller wipes the text.
Result<std::string, std::string> textOf(const DaemonState& state);

}  // namespace halvane::hosting

#endif
