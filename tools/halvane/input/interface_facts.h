// What the kernel tells of a network interface without rights.
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_INPUT_INTERFACE_FACTS_H
#define TOOLS_HALVANE_INPUT_INTERFACE_FACTS_H

#include <optional>
#include <string>
#include <string_view>

#include "halvane/base/mac_address.h"

namespace halvane::tool {

struct InterfaceFacts {
    unsigned index = 0;
    int hardwareType = 0;  // ARPHRD_... of <net/if_arp.h>
    bool isUp = false;
    std::optional<MacAddress> address{};  // of an interface of Ethernet or 802.11
};

// Absent if there is no interface of this name.
std::optional<InterfaceFacts> interfaceFacts(const std::string& name);

// Whether an interface can have this name, by the kernel's rule: 1 to 15 octets without white
// space, '/' and ':', and neither "." nor "..". Refuses control characters too, which the kernel
// allows.
bool isInterfaceName(std::string_view name);

// Returns whether frames of the hardware type are those of 802.11, as in monitor mode.
bool isMonitorType(int hardwareType);

}  // namespace halvane::tool

#endif
