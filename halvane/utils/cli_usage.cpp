// The line that says how a command is called, and the words that name it.
#include "halvane/utils/cli_internal.h"
#include "halvane/utils/printf.h"

namespace halvane::cli {

namespace {

bool isGlobal(const CLIOption& option) {
    return isOption(option) && !hasFlag(option, kCLILocal);
}

void printArguments(CLIOption* table) {
    for (const CLIOption& option : Table(table)) {
        if (option.type != kCLIArgument) continue;
        FPrintF(stderr, " ");
        printName(stderr, option);
    }
}

}  // namespace

void printCommandPath(const Level& level) {
    if (level.above != nullptr && level.above->command != nullptr) {
        printCommandPath(*level.above);
        FPrintF(stderr, " ");
    }
    FPrintF(stderr, "%s", textOrEmpty(level.command->longName));
}

void printUsage(const Level& level) {
    if (level.command->handler == nullptr && hasCommands(level.table)) {
        for (CLIOption& option : Table(level.table)) {
            if (option.type == kCLICommand) printUsage({option.subOptions, &option, &level});
        }
        return;
    }
    FPrintF(stderr, "%*s%s", kIndent, "", gProgramName);
    if (find(gState.root, isGlobal) != nullptr) FPrintF(stderr, " [global options]");
    FPrintF(stderr, " ");
    printCommandPath(level);
    if (hasOptions(level.table)) FPrintF(stderr, " [options]");
    printArguments(level.table);
    FPrintF(stderr, "\n");
}

}  // namespace halvane::cli
