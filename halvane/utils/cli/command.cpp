// The command that the arguments name, and the conditions for running it.
#include <algorithm>
#include <cstdio>
#include <cstring>

#include "halvane/base/status.h"
#include "halvane/utils/cli/message_internal.h"
#include "halvane/utils/cli/parser_internal.h"

namespace halvane::cli {

namespace {

std::int32_t refuseUnknown(const Level& level, const char* name) {
    Message message;
    if (level.command == nullptr) {
        message.add("error: unknown command '%s'. See '%s help' for a list of commands.\n", name,
                    gProgramName);
    } else {
        message.add("error: unknown %s command '%s'. See '%s help ", level.command->longName, name,
                    gProgramName);
        printCommandPath(message, level);
        message.add("' for a list of commands.\n");
    }
    suggestCommand(message, level.table, name);
    return kCLIUsageError;
}

std::int32_t refuseMissing(const Level& level) {
    if (level.command == nullptr) {
        printSummary(stderr);
    } else {
        Message message;
        message.add("error: no %s command specified. See '%s help ", level.command->longName,
                    gProgramName);
        printCommandPath(message, level);
        message.add("' for more information.\n");
    }
    return kCLIUsageError;
}

bool isMissing(const CLIOption& option) {
    return isOption(option) && hasFlag(option, kCLIRequired) && !hasFlag(option, kCLISeen);
}

// Visits the commands that lead to this level, outermost first. Global options belong to no
// command.
template <typename Action>
void forEachMissing(const Level& level, Action act) {
    if (level.command == nullptr) return;
    if (level.above != nullptr) forEachMissing(*level.above, act);
    for (const CLIOption& option : Table(level.table)) {
        if (isMissing(option)) act(option);
    }
}

std::int32_t checkRequired(const Level& level) {
    int width = 0;
    forEachMissing(level,
                   [&](const CLIOption& option) { width = std::max(width, lengthOfName(option)); });
    std::int32_t status = kStatusOK;
    forEachMissing(level, [&](const CLIOption& option) {
        Message message;
        message.add("error: ");
        const int length = printName(message, option);
        message.add("%*s not specified\n", width - length, "");
        status = kCLIUsageError;
    });
    return status;
}

void adopt(CLIOption& command) {
    if (command.subOptions == nullptr) return;
    forgetSeen(command.subOptions);
    command.subOptions->parent = &command;
    if (command.parent == nullptr) command.parent = gState.root;
}

// Parses the options after the command's operands; none follow a "--". They may be options of outer
// commands too. Missing options are therefore known here, before any of the commands runs.
std::int32_t parseRest(Level& level) {
    if (hasCommands(level.table)) return kStatusOK;
    const std::int32_t status =
        level.isEnded ? kStatusOK : parseOptions(level, kCLIReorder | kCLIOptionsOnly);
    return status == kStatusOK ? checkRequired(level) : status;
}

std::int32_t run(CLIOption& command, const Level& above, std::uint32_t flags) {
    adopt(command);
    Level level{command.subOptions, &command, &above};
    std::int32_t status = level.table != nullptr ? parseLevel(level, flags) : kStatusOK;
    if (status == kStatusOK) status = parseRest(level);
    if (status != kStatusOK) return status;
    gCLICurrentOption = &command;
    if (command.handler != nullptr) command.handler();
    return kStatusOK;
}

}  // namespace

CLIOption* findCommand(CLIOption* table, const char* name) {
    return find(table, [name](const CLIOption& option) {
        return option.type == kCLICommand && hasLongName(option) &&
               std::strcmp(option.longName, name) == 0;
    });
}

std::int32_t runCommand(Level& level, std::uint32_t flags) {
    if (!hasCommands(level.table)) return kStatusOK;
    const char* const name = argumentAt(gArgI);
    if (name == nullptr) return refuseMissing(level);
    CLIOption* const command = findCommand(level.table, name);
    if (command == nullptr) return refuseUnknown(level, name);
    ++gArgI;
    return run(*command, level, flags);
}

}  // namespace halvane::cli
