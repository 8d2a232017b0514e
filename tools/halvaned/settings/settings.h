// The daemon's own settings, as its configuration file gives them.
//
// Plain values. Threads: as for a standard container.
#ifndef TOOLS_HALVANED_SETTINGS_SETTINGS_H
#define TOOLS_HALVANED_SETTINGS_SETTINGS_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/halvaned/driver.h"

namespace halvane::hosting {

struct Settings {
    Driver driver = Driver::Nl80211;
    std::vector<std::string> interfaces{};  // these alone; of radios, all if it is empty
    std::string hostapd = "/usr/sbin/hostapd";
    std::string runtimeFolder = "/run/halvaned";
    std::string stateFile = "/var/lib/halvaned/state.plist";
    // ISO 3166-1. Absent: that of the regulatory domain.
    std::optional<std::string> country{};
    // Limits: stations of a network, configurations of an interface, programs that get
    // notifications.
    std::uint32_t stations = 2007;
    std::uint32_t configurations = 32;
    std::uint32_t subscribers = 1024;
    // The server that 802.1X networks ask: one elsewhere, or hostapd's own with this file of users.
    std::optional<std::string> radiusServer{};  // an IP address
    std::uint32_t radiusPort = 1812;
    std::optional<std::string> radiusSecretFile{};
    std::optional<std::string> eapUserFile{};

    bool operator==(const Settings&) const = default;
};

// Which keys differ between two settings.
struct ChangedSettings {
    std::vector<std::string_view> applied{};      // from the next start of a network on
    std::vector<std::string_view> needRestart{};  // from the daemon's next start on

    bool operator==(const ChangedSettings&) const = default;
};
ChangedSettings changesBetween(const Settings& before, const Settings& after);

// The later settings, as far as they count without a restart of the daemon.
Settings settingsWithoutRestart(const Settings& before, Settings after);

}  // namespace halvane::hosting

#endif
