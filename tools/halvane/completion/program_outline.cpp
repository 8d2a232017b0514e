#include "tools/halvane/completion/program_outline.h"

#include <cstdint>
#include <utility>

#include "tools/halvane/options/single_option.h"

namespace halvane::tool {

namespace {

std::string textOf(const char* text) {
    return text != nullptr ? text : "";
}

bool isOption(const CLIOption& row) {
    return row.type >= kCLIBoolean && row.type <= kCLICallback;
}

bool takesValue(const CLIOption& row) {
    return row.type != kCLIBoolean && (row.flags & kCLINoValue) == 0;
}

OutlinedOption optionOf(const std::string& command, const CLIOption& row) {
    OutlinedOption option;
    option.shortName = static_cast<char>(row.shortName);
    option.name = textOf(row.longName);
    option.isRepeatable = row.type == kCLIStringArray || (row.flags & kRepeatable) != 0;
    option.help = textOf(row.shortHelp);
    option.longHelp = textOf(row.longHelp);
    if (!takesValue(row)) return option;
    option.value = row.argName != nullptr ? row.argName : "...";
    option.isAttached = (row.flags & kCLIOptionalValue) != 0;
    option.words = valueWordsOf(command, row);
    return option;
}

void addRow(OutlinedCommand& command, const CLIOption& row, std::string& heading) {
    if (row.type == kCLIGroup) heading = textOf(row.shortHelp);
    if (row.type == kCLISection) {
        command.sections.push_back({textOf(row.shortHelp), textOf(row.longHelp)});
    }
    if (row.type == kCLIArgument) {
        command.arguments.push_back({textOf(row.longName), (row.flags & kCLIOptionalValue) != 0,
                                     textOf(row.shortHelp), valueWordsOf(command.name, row)});
    }
    if (!isOption(row)) return;
    command.options.push_back(optionOf(command.name, row));
    command.options.back().heading = std::exchange(heading, {});
}

OutlinedCommand commandOf(const CLIOption& row) {
    OutlinedCommand command;
    command.name = textOf(row.longName);
    command.help = textOf(row.shortHelp);
    command.longHelp = textOf(row.longHelp);
    if (row.subOptions == nullptr) return command;
    std::string heading;
    for (const CLIOption* inner = row.subOptions; inner->type != kCLIEnd; ++inner) {
        addRow(command, *inner, heading);
    }
    return command;
}

}  // namespace

ProgramOutline outlineOf(std::string name, std::string help, std::span<const CLIOption> table) {
    ProgramOutline outline;
    outline.program.name = std::move(name);
    outline.program.help = std::move(help);
    std::string heading;
    for (const CLIOption& row : table) {
        if (row.type == kCLIEnd) break;
        if (row.type == kCLICommand) {
            outline.commands.push_back(commandOf(row));
        } else {
            addRow(outline.program, row, heading);
        }
    }
    return outline;
}

}  // namespace halvane::tool
