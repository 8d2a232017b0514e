// Prints help. The long form also lists the words that options and arguments take.
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "halvane/utils/cli.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/commands/tool_outline.h"
#include "tools/halvane/completion/program_outline.h"
#include "tools/halvane/completion/script_text.h"
#include "tools/halvane/completion/value_words.h"
#include "tools/halvane/output/paragraph.h"
#include "tools/halvane/output/standard_output.h"

namespace halvane::tool {

namespace {

std::int32_t gIsLong = 0;

std::string wordLines(const std::string& name, const ValueWords& words) {
    if (words.words.empty()) return {};
    constexpr std::size_t kIndent = 8;
    return "    " + name + '\n' +
           paragraph(std::string(kIndent, ' '), spaced(words.words), kIndent);
}

void printWords(const std::string& name) {
    std::string lines;
    for (const OutlinedCommand& command : toolOutline().commands) {
        if (command.name != name) continue;
        for (const OutlinedOption& option : command.options) {
            lines += wordLines("--" + option.name, option.words);
        }
        for (const OutlinedArgument& argument : command.arguments) {
            lines += wordLines(argument.name, argument.words);
        }
    }
    if (!lines.empty()) put("WORDS\n" + lines + '\n');
}

}  // namespace

CLIOption gHelpOptions[] = {
    {.type = kCLIBoolean,
     .longName = "all",
     .valuePtr = &gIsLong,
     .flags = kCLINoValue,
     .shortHelp = "list the words that options and arguments take, too"},
    {.type = kCLIArgument,
     .longName = "COMMAND",
     .flags = kCLIOptionalValue,
     .shortHelp = "explain this command instead of listing all"},
    {.type = kCLIEnd},
};

int helpCommand() {
    const bool isLong = std::exchange(gIsLong, 0) != 0;
    const std::string name = gArgI < gArgC ? gArgV[gArgI] : "";
    gExitCode = kExitDone;
    _CLIHelpCommand();
    if (gExitCode != kExitDone) return kExitUsage;
    if (isLong && !name.empty()) printWords(name);
    return kExitDone;
}

}  // namespace halvane::tool
