// The table of all commands of the tool.
#ifndef TOOLS_HALVANE_COMMANDS_COMMAND_TABLE_H
#define TOOLS_HALVANE_COMMANDS_COMMAND_TABLE_H

#include <vector>

#include "halvane/utils/cli.h"

namespace halvane::tool {

// The table for CLIParse(), with its end. The tables of the commands' options are shared by all
// copies.
std::vector<CLIOption> commandTable();

}  // namespace halvane::tool

#endif
