// The commands of the tool.
#ifndef TOOLS_HALVANE_COMMAND_H
#define TOOLS_HALVANE_COMMAND_H

#include "halvane/utils/cli.h"

namespace halvane::tool {

// Exit statuses of every command.
inline constexpr int kExitDone = 0;
inline constexpr int kExitFailed = 1;
inline constexpr int kExitUsage = 2;

// What a command does once its options are parsed; it answers the exit status.
using Command = int (*)();

// Runs it. What it throws becomes a message and kExitFailed.
int exitStatusOf(Command command) noexcept;

// A command as the handler of an option table: its status goes to gExitCode.
template <Command command>
void handle() {
    gExitCode = exitStatusOf(command);
}

// The options of each command, and the command.
extern CLIOption gDecodeOptions[];
int decodeCommand();
extern CLIOption gChannelsOptions[];
int channelsCommand();
extern CLIOption gPINOptions[];
int pinCommand();

}  // namespace halvane::tool

#endif
