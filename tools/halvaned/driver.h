// How hostapd reaches stations.
//
// Free functions; any thread may call them.
#ifndef TOOLS_HALVANED_DRIVER_H
#define TOOLS_HALVANED_DRIVER_H

#include <optional>
#include <string_view>

namespace halvane::hosting {

enum class Driver {
    Nl80211,  // by a radio
    Wired,    // by a cable, for trials without a radio: one network, authenticated by 802.1X
};

// "nl80211" or "wired", as hostapd has them. Static text.
std::string_view nameOf(Driver driver) noexcept;

// Absent for a text that is no driver's name.
std::optional<Driver> driverOf(std::string_view name) noexcept;

}  // namespace halvane::hosting

#endif
