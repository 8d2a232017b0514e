// What the tool says of scans that fail, and what to do about it.
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_INPUT_SCAN_MESSAGES_H
#define TOOLS_HALVANE_INPUT_SCAN_MESSAGES_H

#include <span>
#include <string>
#include <vector>

#include "tools/halvane/input/nl80211_scan.h"
#include "tools/halvane/input/wireless_interface.h"

namespace halvane::tool {

// Returns what is wrong, in one line: "wlan0: is down". Names of interfaces are in it unchanged.
std::string headline(const ScanFault& fault);

// Returns what to do about it, ready to be copied: no line, or up to three. A list of those that
// there are helps who mistyped one.
std::vector<std::string> advice(const ScanFault& fault,
                                std::span<const WirelessInterface> interfaces);

}  // namespace halvane::tool

#endif
