// The schemas of the JSON that commands print.
#ifndef TOOLS_HALVANE_COMMANDS_COMMAND_SCHEMAS_H
#define TOOLS_HALVANE_COMMANDS_COMMAND_SCHEMAS_H

#include <string_view>
#include <vector>

#include "tools/halvane/output/json_schema.h"

namespace halvane::tool {

// One for each command that prints JSON, in the order of the help.
const std::vector<CommandSchema>& commandSchemas();

// Null if the command prints no JSON.
const CommandSchema* schemaOf(std::string_view command);

}  // namespace halvane::tool

#endif
