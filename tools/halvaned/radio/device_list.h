// The devices that can host networks, and their network interfaces, as they are now.
//
// Plain values. Threads: as for a standard container.
#ifndef TOOLS_HALVANED_RADIO_DEVICE_LIST_H
#define TOOLS_HALVANED_RADIO_DEVICE_LIST_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/mac_address.h"

#include "tools/halvane/input/wireless_interface.h"
#include "tools/halvaned/radio/radio.h"
#include "tools/halvaned/radio/regulatory_domain.h"

namespace halvane::hosting {

struct DeviceInterface {
    std::string name{};
    unsigned index = 0;  // the kernel's
    std::optional<MacAddress> address{};
    std::optional<std::uint32_t> radio{};  // its index; absent for a wired interface
    tool::InterfaceMode mode = tool::InterfaceMode::Unspecified;
    std::string driver{};  // the kernel's; empty if it is not known

    bool operator==(const DeviceInterface&) const = default;
};

struct DeviceList {
    std::vector<Radio> radios{};                // in the order of their indexes
    std::vector<DeviceInterface> interfaces{};  // likewise
    std::vector<RegulatoryDomain> domains{};    // that of all radios, and those of single ones

    // Null for a name that no interface has.
    const DeviceInterface* find(std::string_view interface) const;
    // Null for a wired interface.
    const Radio* radioOf(const DeviceInterface& interface) const;
    // The country whose rules an interface follows. Absent for a wired one, and if the kernel does
    // not tell.
    std::optional<std::string> countryOf(const DeviceInterface& interface) const;

    bool operator==(const DeviceList&) const = default;
};

}  // namespace halvane::hosting

#endif
