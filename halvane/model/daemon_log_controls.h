// Controls for the daemon's log categories.
#ifndef HALVANE_MODEL_DAEMON_LOG_CONTROLS_H
#define HALVANE_MODEL_DAEMON_LOG_CONTROLS_H

#include <array>
#include <optional>
#include <string>

#include "halvane/model/daemon_protocol.h"

namespace halvane {

// The log categories that a daemon has.
inline constexpr auto kDaemonLogCategories = protocol::kLogCategories;

// One control string (docs/logging.md) for each category, in that order. An absent string leaves
// its category unchanged.
using DaemonLogControls = std::array<std::optional<std::string>, kDaemonLogCategories.size()>;

}  // namespace halvane

#endif
