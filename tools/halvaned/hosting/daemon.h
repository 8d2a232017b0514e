// The daemon as a process: its loop, the bus, signals, and what it says to systemd.
#ifndef TOOLS_HALVANED_HOSTING_DAEMON_H
#define TOOLS_HALVANED_HOSTING_DAEMON_H

#include <optional>
#include <string>

namespace halvane::hosting {

struct DaemonOptions {
    std::optional<std::string> settingsFile;  // absent: the usual one, if it is there
    bool isForeground = false;  // stays where it was started, and logs to standard error
    bool isVerbose = false;
};

// Runs until SIGTERM or SIGINT arrives, the bus is gone, or the daemon cannot run, and returns the
// exit status: EXIT_SUCCESS after a signal. SIGHUP reads the settings again, and reopens the files
// of the log. REQUIRES: the process has one thread.
int runDaemon(DaemonOptions options);

}  // namespace halvane::hosting

#endif
