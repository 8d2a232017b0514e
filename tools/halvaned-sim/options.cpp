#include "tools/halvaned-sim/options.h"

#include <cstdint>
#include <cstdio>

#include "tools/halvaned-sim/control.h"

namespace halvane::sim {

SimOptions gSimOptions;

namespace {

std::int32_t help(CLIOption* option, const char* value, int negated) {
    const std::int32_t status = _CLIHelpOption(option, value, negated);
    std::fprintf(
        stderr,
        "Simulates the Wi-Fi daemon, so that its clients can be tried and tested. It uses\n"
        "no radio. It runs until SIGTERM, SIGINT, SIGHUP or SIGQUIT arrives, or until its\n"
        "command ends:\n\n"
        "    halvaned-sim [options]\n"
        "    halvaned-sim [options] [--] COMMAND [ARGUMENTS]\n\n"
        "It joins the system bus, which DBUS_SYSTEM_BUS_ADDRESS may name, or starts a bus\n"
        "of its own. The exit status is that of the command: 128+N if signal N ended it,\n"
        "127 if it does not exist, 126 if it cannot be run. Without a command it is 0,\n"
        "1 after a failure, or 2 after wrong usage.\n\n"
        "Control lines:\n\n%s\n",
        controlHelp().c_str());
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
    {.type = kCLIBoolean,
     .longName = "private",
     .valuePtr = &gSimOptions.isPrivate,
     .shortHelp = "start a private bus, and print its address"},
    {.type = kCLIString,
     .longName = "state",
     .valuePtr = &gSimOptions.state,
     .argName = "FILE",
     .shortHelp = "simulate the world in FILE; \"-\" is standard input"},
    {.type = kCLIBoolean,
     .longName = "print-state",
     .valuePtr = &gSimOptions.printsState,
     .shortHelp = "print the simulated world for --state, and exit"},
    {.type = kCLIStringArray,
     .longName = "control",
     .valuePtr = &gSimOptions.lines.items,
     .countPtr = &gSimOptions.lines.count,
     .argName = "LINE",
     .shortHelp = "carry out a control line at the start; may be repeated"},
    {.type = kCLIStringArray,
     .longName = "send",
     .valuePtr = &gSimOptions.linesToSend.items,
     .countPtr = &gSimOptions.linesToSend.count,
     .argName = "LINE",
     .shortHelp = "send the line to a running simulation; may be repeated"},
    {.type = kCLIArgument,
     .longName = "COMMAND...",
     .flags = kCLIOptionalValue,
     .shortHelp = "run this on the bus, and end with it"},
    {.type = kCLIEnd},
};

}  // namespace

CLIOption* simOptions() {
    return gOptions;
}

}  // namespace halvane::sim
