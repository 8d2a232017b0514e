// Prints the script with which a shell completes command lines.
#include <string>
#include <string_view>
#include <vector>

#include "halvane/utils/cli.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/commands/tool_outline.h"
#include "tools/halvane/completion/completion_script.h"
#include "tools/halvane/options/argument.h"
#include "tools/halvane/output/standard_output.h"

namespace halvane::tool {

CLIOption gCompletionOptions[] = {
    {.type = kCLIArgument, .longName = "bash|zsh|fish", .shortHelp = "the shell"},
    {.type = kCLISection,
     .shortHelp = "EXAMPLES",
     .longHelp = "source <(halvane completion bash)\n"
                 "source <(halvane completion zsh)\n"
                 "halvane completion fish | source"},
    {.type = kCLISection,
     .shortHelp = "EXIT STATUS",
     .longHelp = "0 success; 1 writing failed; 2 usage error."},
    {.type = kCLIEnd},
};

int completionCommand() {
    const std::vector<std::string> words = takeArguments();
    if (words.size() != 1) return refuse("completion", "takes one shell: bash, zsh or fish");
    std::vector<std::string_view> names;
    for (const CompletionShell& shell : kCompletionShells) {
        if (shell.name == words[0]) {
            put(shell.script(toolOutline()));
            return kExitDone;
        }
        names.push_back(shell.name);
    }
    return refuse("completion", withSuggestion({"'" + words[0] + "' is not bash, zsh or fish"}, "",
                                               words[0], names));
}

}  // namespace halvane::tool
