// The statuses that this daemon has beside those of all daemons (docs/hosting.md).
#ifndef TOOLS_HALVANED_HOSTING_HOSTING_STATUS_H
#define TOOLS_HALVANED_HOSTING_HOSTING_STATUS_H

#include "halvane/model/daemon_status.h"

namespace halvane::hosting {

// The state file cannot be written. Nothing has changed.
inline constexpr auto kNotSaved = static_cast<DaemonStatus>(kFirstOwnStatus);
// The radio or hostapd cannot host these configurations. The log says why.
inline constexpr auto kCannotHost = static_cast<DaemonStatus>(kFirstOwnStatus + 1);
// hostapd refused its configuration, could not be started, or did not get ready. The log has its
// last words.
inline constexpr auto kHostapdFailed = static_cast<DaemonStatus>(kFirstOwnStatus + 2);
// The interface has as many configurations as the settings allow.
inline constexpr auto kTooManyConfigurations = static_cast<DaemonStatus>(kFirstOwnStatus + 3);
// The network was stopped before it was ready: by another request, or by the daemon's end.
inline constexpr auto kStopped = static_cast<DaemonStatus>(kFirstOwnStatus + 4);
// The configuration takes more room than the state has for one.
inline constexpr auto kTooLarge = static_cast<DaemonStatus>(kFirstOwnStatus + 5);

}  // namespace halvane::hosting

#endif
