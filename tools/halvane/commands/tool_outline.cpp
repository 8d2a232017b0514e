#include "tools/halvane/commands/tool_outline.h"

#include <string>
#include <utility>
#include <vector>

#include "tools/halvane/commands/command_schemas.h"
#include "tools/halvane/commands/command_table.h"
#include "tools/halvane/completion/value_words.h"
#include "tools/halvane/output/json_schema.h"

namespace halvane::tool {

namespace {

std::vector<std::string> commandNames(const ProgramOutline& outline) {
    std::vector<std::string> names;
    for (const OutlinedCommand& command : outline.commands) names.push_back(command.name);
    return names;
}

std::vector<std::string> schemaNames() {
    std::vector<std::string> names;
    for (const CommandSchema& schema : commandSchemas()) names.emplace_back(schema.command);
    return names;
}

// The command named `name` takes one of the commands.
void setCommands(ProgramOutline& outline, const char* name, std::vector<std::string> names) {
    for (OutlinedCommand& command : outline.commands) {
        if (command.name != name) continue;
        for (OutlinedArgument& argument : command.arguments) {
            argument.words = {ValueWords::Kind::Words, std::move(names)};
            return;
        }
    }
}

}  // namespace

ProgramOutline toolOutline() {
    ProgramOutline outline =
        outlineOf("halvane", "look at Wi-Fi networks, and host them", commandTable());
    setCommands(outline, "help", commandNames(outline));
    setCommands(outline, "schema", schemaNames());
    return outline;
}

}  // namespace halvane::tool
