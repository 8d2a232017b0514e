#include "tools/halvaned/options.h"

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>

namespace halvane::hosting {

namespace {

const char* gSettingsFile;
std::int32_t gIsForeground;
std::int32_t gIsVerbose;

std::int32_t help(CLIOption* option, const char* value, int negated) {
    const std::int32_t status = _CLIHelpOption(option, value, negated);
    std::fputs(
        "Hosts Wi-Fi networks with hostapd, as its clients on the system bus ask for it\n"
        "(\"halvane start wlan0\"):\n\n"
        "    halvaned [options]\n\n"
        "SIGTERM and SIGINT end it and its networks, which the next start brings back.\n"
        "SIGHUP has it read its configuration file again. The exit status is 0 after\n"
        "these signals, 1 if it cannot run, or 2 after wrong usage or wrong settings.\n",
        stderr);
    return status;
}

CLIOption gOptions[] = {
    {.type = kCLICallback,
     .shortName = 'h',
     .longName = "help",
     .flags = kCLINoValue | kCLINoNegation,
     .callback = help,
     .shortHelp = "print this help"},
    {.type = kCLICallback,
     .longName = "version",
     .valuePtr = CLI_TEXT(HALVANE_VERSION),
     .countPtr = CLI_TEXT(HALVANE_BUILD),
     .flags = kCLINoValue | kCLINoNegation,
     .callback = _CLIVersionOption,
     .shortHelp = "print the version"},
    {.type = kCLIString,
     .longName = "config",
     .valuePtr = &gSettingsFile,
     .argName = "FILE",
     .shortHelp = "read FILE instead of /etc/halvane/halvaned.conf"},
    {.type = kCLIBoolean,
     .longName = "foreground",
     .valuePtr = &gIsForeground,
     .shortHelp = "stay in the foreground, and log to standard error"},
    {.type = kCLIBoolean,
     .longName = "verbose",
     .valuePtr = &gIsVerbose,
     .shortHelp = "log all that there is"},
    {.type = kCLIEnd},
};

}  // namespace

CLIOption* daemonOptions() {
    return gOptions;
}

DaemonOptions takeDaemonOptions() {
    return {.settingsFile =
                gSettingsFile != nullptr ? std::optional<std::string>(gSettingsFile) : std::nullopt,
            .isForeground = gIsForeground != 0,
            .isVerbose = gIsVerbose != 0};
}

}  // namespace halvane::hosting
