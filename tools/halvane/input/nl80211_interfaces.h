// The interfaces that nl80211 knows.
//
// Free functions; any thread may call them, with a channel of its own.
#ifndef TOOLS_HALVANE_INPUT_NL80211_INTERFACES_H
#define TOOLS_HALVANE_INPUT_NL80211_INTERFACES_H

#include <vector>

#include "halvane/base/result.h"

#include "tools/halvane/input/nl80211_channel.h"
#include "tools/halvane/input/wireless_interface.h"

namespace halvane::tool {

// In the order of their indexes. A message that cannot be read tells no interface.
Result<std::vector<WirelessInterface>, Nl80211Fault> interfacesOf(Nl80211Channel& channel);

// All interfaces that hear 802.11, by nl80211 and by the kernel's list of interfaces. Empty also if
// the kernel does not tell.
std::vector<WirelessInterface> wirelessInterfaces();

}  // namespace halvane::tool

#endif
