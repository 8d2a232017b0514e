// The scripts with which shells complete a program's command lines.
#ifndef TOOLS_HALVANE_COMPLETION_COMPLETION_SCRIPT_H
#define TOOLS_HALVANE_COMPLETION_COMPLETION_SCRIPT_H

#include <array>
#include <string>
#include <string_view>

#include "tools/halvane/completion/program_outline.h"

namespace halvane::tool {

// For bash 4.4 and later; it needs no other package.
std::string bashCompletion(const ProgramOutline& outline);
// For zsh's own system of completions (compinit).
std::string zshCompletion(const ProgramOutline& outline);
// For fish 3 and later.
std::string fishCompletion(const ProgramOutline& outline);

struct CompletionShell {
    std::string_view name;
    std::string (*script)(const ProgramOutline&);
};
inline constexpr std::array<CompletionShell, 3> kCompletionShells = {
    {{"bash", bashCompletion}, {"zsh", zshCompletion}, {"fish", fishCompletion}}};

}  // namespace halvane::tool

#endif
