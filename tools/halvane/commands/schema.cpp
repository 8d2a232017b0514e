// The schemas of the JSON that commands print.
#include <string>
#include <string_view>
#include <vector>

#include "halvane/utils/cli.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/commands/command_schemas.h"
#include "tools/halvane/options/argument.h"
#include "tools/halvane/output/json_schema.h"
#include "tools/halvane/output/json_writer.h"
#include "tools/halvane/output/print_records.h"
#include "tools/halvane/output/standard_output.h"

namespace halvane::tool {

namespace {

UsageError noSchema(const std::string& command) {
    std::vector<std::string_view> commands;
    for (const CommandSchema& schema : commandSchemas()) commands.emplace_back(schema.command);
    return withSuggestion({"no JSON of '" + command + "' ('halvane schema' lists what has)"}, "",
                          command, commands);
}

}  // namespace

CLIOption gSchemaOptions[] = {
    {.type = kCLIArgument,
     .longName = "COMMAND",
     .flags = kCLIOptionalValue,
     .shortHelp = "the command whose JSON to describe"},
    {.type = kCLISection,
     .shortHelp = "EXIT STATUS",
     .longHelp = "0 success; 1 writing failed; 2 usage error, also where the command prints no\n"
                 "JSON."},
    {.type = kCLIEnd},
};

int schemaCommand() {
    const std::vector<std::string> words = takeArguments();
    if (words.size() > 1) return refuse("schema", "takes one command");
    if (words.empty()) {
        for (const CommandSchema& schema : commandSchemas()) {
            put(std::string(schema.command) + '\n');
        }
        return kExitDone;
    }
    const CommandSchema* const schema = schemaOf(words[0]);
    if (schema == nullptr) return refuse("schema", noSchema(words[0]));
    JSONWriter writer(JSONWriter::Layout::Indented);
    writeJSON(writer, *schema);
    writer.newline();
    putJSON(writer);
    return kExitDone;
}

}  // namespace halvane::tool
