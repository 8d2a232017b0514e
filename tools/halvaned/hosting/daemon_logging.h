// The daemon's logging: the Wi-Fi categories of the library, which clients may change.
//
// The logging system is one a process. Threads: as for LogSettings.
#ifndef TOOLS_HALVANED_HOSTING_DAEMON_LOGGING_H
#define TOOLS_HALVANED_HOSTING_DAEMON_LOGGING_H

#include <string>
#include <string_view>

#include "halvane/service/log_settings.h"

namespace halvane::hosting {

enum class LogPlace { File, Console };  // /var/log/halvaned.log, standard error

// What the Wi-Fi categories log until clients change it: notices and worse, or all if `isVerbose`.
// Call it before anything logs.
void startLogging(LogPlace place, bool isVerbose);

// A line of the category WiFi.
void logNotice(std::string_view line);
void logError(std::string_view line);

class DaemonLogging : public LogSettings {
  public:
    // Patterns are the names of categories. Clients choose levels, flags, rates, and one of the
    // outputs that no client can misuse: the console, a standard stream, the system's log, or the
    // daemon's own file. BadRequest for any other output, which could replace a file or call any
    // address as the daemon's user, and for
    // '+', which would keep the settings in the preferences of that user.
    DaemonStatus apply(const DaemonLogControls& controls) override;

    // What LogUtils_Show() tells.
    std::string text() const override;
};

}  // namespace halvane::hosting

#endif
