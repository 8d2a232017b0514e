// The latest control strings of the Wi-Fi log categories. The simulation stores them, and logs
// nothing.
#ifndef TOOLS_HALVANED_SIM_LOGGING_SETTINGS_H
#define TOOLS_HALVANED_SIM_LOGGING_SETTINGS_H

#include <array>
#include <string>

#include "halvane/model/daemon_log_controls.h"
#include "halvane/model/daemon_status.h"
#include "halvane/service/log_settings.h"

namespace halvane::sim {

class LoggingSettings final : public LogSettings {
  public:
    // By default each category logs to the daemon's file.
    LoggingSettings();

    DaemonStatus apply(const DaemonLogControls& controls) override;

    // One line per category: "WiFi: ?WiFi:output=file;path=/var/log/halvaned.log\n". ASCII control
    // characters, which could break the line, become \xNN.
    std::string text() const override;

  private:
    std::array<std::string, kDaemonLogCategories.size()> controls_;
};

}  // namespace halvane::sim

#endif
