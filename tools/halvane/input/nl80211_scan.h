// The kernel's list of networks around, by nl80211. It needs no monitor mode, and no rights unless
// it is to be a fresh one.
//
// Free functions; any thread may call them, with a channel of its own.
#ifndef TOOLS_HALVANE_INPUT_NL80211_SCAN_H
#define TOOLS_HALVANE_INPUT_NL80211_SCAN_H

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "halvane/base/result.h"

#include "tools/halvane/input/nl80211_channel.h"
#include "tools/halvane/input/nl80211_message.h"
#include "tools/halvane/input/wireless_interface.h"

namespace halvane::tool {

enum class ScanProblem {
    NoNl80211,            // in the kernel
    NoWirelessInterface,  // on this machine
    NoSuchInterface,
    NotWireless,  // the interface is another
    NotPermitted,
    Busy,  // another scan is under way
    Down,
    NotSupported,  // by the interface in its mode
    Aborted,
    TimedOut,
    Interrupted,  // by the caller
    Other,
};

struct ScanFault {
    ScanProblem problem = ScanProblem::Other;
    std::string interface {};
    std::string text{};  // of Other: the system's words

    bool operator==(const ScanFault&) const = default;
};

struct ScanList {
    std::vector<ScannedNetwork> networks;  // in the kernel's order
    std::size_t unreadable = 0;            // messages
    std::string fault{};                   // of the first of these
};

// The interface to scan with: the one of this name, or, if `name` is absent, the first in managed
// mode, or else the first.
Result<WirelessInterface, ScanFault> chooseScanInterface(
    std::span<const WirelessInterface> interfaces, const std::optional<std::string>& name);

// The list that the kernel has. It is asked again if it changes meanwhile.
Result<ScanList, ScanFault> scanList(Nl80211Channel& channel, const WirelessInterface& interface);

// Has the interface look around, on all its channels, and waits until it has. Takes seconds. The
// wait ends at `deadline`, and once `interrupt` is readable (-1: nothing interrupts).
std::optional<ScanFault> triggerScan(Nl80211Channel& channel, const WirelessInterface& interface,
                                     Nl80211Channel::Clock::time_point deadline,
                                     int interrupt = -1);

// What the fault of a question means for the interface.
ScanFault scanFaultOf(const Nl80211Fault& fault, const std::string& interface);

}  // namespace halvane::tool

#endif
