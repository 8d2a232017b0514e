// The daemon's log categories, and the controls that set them.
#ifndef HALVANE_DAEMON_DAEMON_LOG_CONTROLS_H
#define HALVANE_DAEMON_DAEMON_LOG_CONTROLS_H

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace halvane {

inline constexpr std::array<std::string_view, 9> kDaemonLogCategories = {
    "WiFi",     "WiFiBPF",  "WiFiEAPOL", "WiFiIE", "WiFiIO80211",
    "WiFiJoin", "WiFiScan", "WiFiWPS",   "WiFiXPC"};

// One control string (docs/logging.md) for each category, in that order. An absent string leaves
// its category unchanged.
using DaemonLogControls = std::array<std::optional<std::string>, kDaemonLogCategories.size()>;

}  // namespace halvane

#endif
