// A program's option tables in a form from which manuals and completions are written.
//
// Plain values and pure functions; any thread may use them.
#ifndef TOOLS_HALVANE_COMPLETION_PROGRAM_OUTLINE_H
#define TOOLS_HALVANE_COMPLETION_PROGRAM_OUTLINE_H

#include <span>
#include <string>
#include <vector>

#include "halvane/utils/cli.h"

#include "tools/halvane/completion/value_words.h"

namespace halvane::tool {

struct OutlinedOption {
    char shortName = 0;       // 0 for none
    std::string name;         // without its hyphens; empty for none
    std::string value;        // the name of its value; empty if it takes none
    bool isAttached = false;  // the value may be left out, and stands behind '=' otherwise
    bool isRepeatable = false;
    std::string help;
    std::string longHelp;
    std::string heading;  // the group that begins with it; empty within a group
    ValueWords words;

    bool takesValue() const { return !value.empty(); }
};

struct OutlinedArgument {
    std::string name;
    bool isOptional = false;
    std::string help;
    ValueWords words;

    bool isRepeatable() const { return name.ends_with("..."); }
};

struct OutlinedSection {
    std::string title;
    std::string text;
};

// A command, or a program without commands.
struct OutlinedCommand {
    std::string name;
    std::string help;
    std::string longHelp;
    std::vector<OutlinedOption> options;
    std::vector<OutlinedArgument> arguments;
    std::vector<OutlinedSection> sections;
};

struct ProgramOutline {
    OutlinedCommand program;  // with the global options
    std::vector<OutlinedCommand> commands;
};

// `table` may end with kCLIEnd. Commands within commands are left out.
ProgramOutline outlineOf(std::string name, std::string help, std::span<const CLIOption> table);

}  // namespace halvane::tool

#endif
