// What hostapd is to host at an interface.
//
// A function that reads the files that the settings name; any thread may call it.
#ifndef TOOLS_HALVANED_HOSTING_HOSTING_PLAN_H
#define TOOLS_HALVANED_HOSTING_HOSTING_PLAN_H

#include <functional>
#include <string>

#include "halvane/base/result.h"

#include "tools/halvaned/hostapd/hostapd_file.h"
#include "tools/halvaned/radio/device_list.h"
#include "tools/halvaned/settings/settings.h"
#include "tools/halvaned/state/daemon_state.h"

namespace halvane::hosting {

// Whether the system has an interface of this name that hostapd did not make for the daemon.
using IsTaken = std::function<bool(const std::string& name)>;

// All configurations of the interface become networks, by their preferred order, and those of equal
// order as they were added. The first network is that of the interface itself; hostapd makes an
// interface for each other one: "wlan0_1", "wlan0_2" and so on, with the end of a long name cut
// off, and without those that are taken, since hostapd would replace them. The error is a sentence
// without secrets: there are more networks than the radio can host, it may not use the channel, a
// channel that needs radar detection has no country, or the secret of the RADIUS server cannot be
// read. REQUIRES: there is a configuration.
Result<HostapdPlan, std::string> hostingPlan(const DeviceList& devices,
                                             const DeviceInterface& interface,
                                             const InterfaceState& state, const Settings& settings,
                                             const IsTaken& isTaken);

}  // namespace halvane::hosting

#endif
