// Help: the summary of all commands, and the page of one.
#include <algorithm>
#include <cstdio>
#include <cstring>

#include "halvane/base/status.h"
#include "halvane/utils/cli/message_internal.h"
#include "halvane/utils/cli/parser_internal.h"

namespace halvane::cli {

namespace {

bool isFull() {
    return (gState.flags & kCLIFullHelp) != 0;
}

// Where help goes that the user asks for.
std::FILE* helpStream() {
    return isFull() ? stdout : stderr;
}

bool printCommands(Message& message, CLIOption* table, const char* title) {
    if (!hasCommands(table)) return false;
    int width = 0;
    for (const CLIOption& option : Table(table)) {
        if (option.type != kCLICommand) continue;
        width = std::max(width, Message(nullptr).add("%s", textOrEmpty(option.longName)));
    }
    message.add("%s", title);
    for (const CLIOption& option : Table(table)) {
        if (option.type != kCLICommand) continue;
        message.add("%*s%-*s    %s\n", kIndent, "", width, textOrEmpty(option.longName),
                    textOrEmpty(option.shortHelp));
    }
    return true;
}

void printSections(Message& message, CLIOption* table) {
    for (const CLIOption& option : Table(table)) {
        if (option.type != kCLISection) continue;
        message.add("%s\n", textOrEmpty(option.shortHelp));
        printIndented(message, option.longHelp, kIndent);
        message.add("\n");
    }
}

// Follows the arguments as long as each names a command of the one before. Prints the last one's
// help.
void printHelpOfArguments(const Level& level) {
    const char* const name = argumentAt(gArgI);
    CLIOption* const next = name != nullptr ? findCommand(level.table, name) : nullptr;
    if (next == nullptr) return printCommandHelp(level);
    ++gArgI;
    printHelpOfArguments({next->subOptions, next, &level});
}

// Prints the help of the command being parsed, or of the program if there is none.
void printHelpOf(const Level* level) {
    if (level == nullptr || level->command == nullptr) return printSummary(helpStream());
    printCommandHelp(*level);
}

std::int32_t refuseUnknown(const char* name) {
    Message message;
    message.add("error: unknown command '%s'.\n", name);
    suggestCommand(message, gState.root, name);
    return kCLIUsageError;
}

}  // namespace

void printIndented(Message& message, const char* text, int indent) {
    for (const char* line = textOrEmpty(text); *line != '\0';) {
        const auto length = static_cast<int>(strchrnul(line, '\n') - line);
        message.add("%*s%.*s\n", length > 0 ? indent : 0, "", length, line);
        line += length;
        if (*line == '\n') ++line;
    }
}

void printSummary(std::FILE* stream) {
    CLIOption* const root = gState.root;
    Message message(stream);
    message.add("\nUsage: %s", gProgramName);
    if (hasOptions(root)) message.add(" [global options]");
    if (hasCommands(root)) message.add(" <command> [options] [args]");
    message.add("\n");
    const bool hasListedOptions = printOptions(message, root, {nullptr, false, false});
    const bool hasListedCommands = printCommands(message, root, "\nCommands:\n\n");
    if (hasListedOptions || hasListedCommands) message.add("\n");
    if (hasListedCommands) {
        message.add("See '%s help <command>' for more information about a specific command.\n\n",
                    gProgramName);
    }
}

void printCommandHelp(const Level& level) {
    const CLIOption& command = *level.command;
    Message message(helpStream());
    message.add("\nNAME\n%*s%s ", kIndent, "", gProgramName);
    printCommandPath(message, level);
    message.add(" -- %s\n\nSYNOPSIS\n", textOrEmpty(command.shortHelp));
    printUsage(message, level);
    message.add("\n");
    if (*textOrEmpty(command.longHelp) != '\0') {
        message.add("DESCRIPTION\n");
        printIndented(message, command.longHelp, kIndent);
        message.add("\n");
    }
    printOptions(message, gState.root, {"GLOBAL OPTIONS", true, true});
    printOptions(message, level.table, {"OPTIONS", true, false});
    if (isFull() && printCommands(message, level.table, "COMMANDS\n")) message.add("\n");
    printSections(message, level.table);
}

}  // namespace halvane::cli

extern "C" std::int32_t _CLIHelpOption(CLIOption*, const char* value, int negated) {
    using namespace halvane::cli;
    if (negated != 0) return kStatusOK;
    if (value == nullptr) {
        printHelpOf(gState.level);
        return kStatusDone;
    }
    CLIOption* const command = findCommand(gState.root, value);
    if (command == nullptr) return refuseUnknown(value);
    printCommandHelp({command->subOptions, command, nullptr});
    return kStatusDone;
}

extern "C" void _CLIHelpCommand() {
    using namespace halvane::cli;
    const char* const name = argumentAt(gArgI);
    if (name == nullptr) return printSummary(helpStream());
    ++gArgI;
    CLIOption* const command = findCommand(gState.root, name);
    if (command == nullptr) {
        gExitCode = refuseUnknown(name);
        return;
    }
    printHelpOfArguments({command->subOptions, command, nullptr});
}
