// The usage line of a command, and the words that name the command.
#include "halvane/utils/cli/message_internal.h"
#include "halvane/utils/cli/parser_internal.h"

namespace halvane::cli {

namespace {

bool isGlobal(const CLIOption& option) {
    return isOption(option) && !hasFlag(option, kCLILocal);
}

void printArguments(Message& message, CLIOption* table) {
    for (const CLIOption& option : Table(table)) {
        if (option.type != kCLIArgument) continue;
        message.add(" ");
        printName(message, option);
    }
}

}  // namespace

void printCommandPath(Message& message, const Level& level) {
    if (level.above != nullptr && level.above->command != nullptr) {
        printCommandPath(message, *level.above);
        message.add(" ");
    }
    message.add("%s", textOrEmpty(level.command->longName));
}

void printUsage(Message& message, const Level& level) {
    if (level.command->handler == nullptr && hasCommands(level.table)) {
        for (CLIOption& option : Table(level.table)) {
            if (option.type == kCLICommand)
                printUsage(message, {option.subOptions, &option, &level});
        }
        return;
    }
    message.add("%*s%s", kIndent, "", gProgramName);
    if (find(gState.root, isGlobal) != nullptr) message.add(" [global options]");
    message.add(" ");
    printCommandPath(message, level);
    if (hasOptions(level.table)) message.add(" [options]");
    printArguments(message, level.table);
    message.add("\n");
}

}  // namespace halvane::cli
