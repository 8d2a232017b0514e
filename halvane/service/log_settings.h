// The logging of a daemon, as its clients set and read it.
//
// Threads: all calls come from the thread that runs the server's loop.
#ifndef HALVANE_SERVICE_LOG_SETTINGS_H
#define HALVANE_SERVICE_LOG_SETTINGS_H

#include <string>

#include "halvane/base/export.h"
#include "halvane/model/daemon_log_controls.h"  // IWYU pragma: export
#include "halvane/model/daemon_status.h"        // IWYU pragma: export

namespace halvane {

// REQUIRES of each function: throws nothing but std::bad_alloc.
class HALVANE_EXPORT LogSettings {
  public:
    LogSettings() = default;
    LogSettings(const LogSettings&) = delete;
    LogSettings& operator=(const LogSettings&) = delete;
    virtual ~LogSettings();

    // Applies all control strings (docs/logging.md) that are present, and returns Done; or applies
    // none, and returns the reason.
    virtual DaemonStatus apply(const DaemonLogControls& controls) = 0;

    // The present settings, in the daemon's own words. UTF-8.
    virtual std::string text() const = 0;
};

}  // namespace halvane

#endif
