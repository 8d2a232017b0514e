// The commands of the tool.
#ifndef TOOLS_HALVANE_COMMAND_H
#define TOOLS_HALVANE_COMMAND_H

namespace halvane::tool {

// Exit statuses of every command.
inline constexpr int kExitDone = 0;
inline constexpr int kExitFailed = 1;
inline constexpr int kExitUsage = 2;

// Runs one command; argv[0] is the command's name. Answers the exit status.
using CommandMain = int (*)(int argc, char** argv);

int decodeCommand(int argc, char** argv);

}  // namespace halvane::tool

#endif
