// What the tool says of interfaces that cannot be listened to, and what to do about it.
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_INPUT_LIVE_MESSAGES_H
#define TOOLS_HALVANE_INPUT_LIVE_MESSAGES_H

#include <span>
#include <string>
#include <vector>

#include "tools/halvane/input/live_fault.h"
#include "tools/halvane/input/wireless_interface.h"

namespace halvane::tool {

// Returns what is wrong, in one line: "wlan1: not permitted to capture". Names of interfaces are
// in it unchanged.
std::string headline(const LiveFault& fault);

// As headline(), for a fault whose interface is among those that there are: its mode has its name.
std::string headline(const LiveFault& fault, std::span<const WirelessInterface> interfaces);

// Returns what to do about it, ready to be copied: no line, or up to three. `program` is the path
// of the tool.
std::vector<std::string> advice(const LiveFault& fault,
                                std::span<const WirelessInterface> interfaces,
                                const std::string& program);

}  // namespace halvane::tool

#endif
