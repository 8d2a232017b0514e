// The commands of the tool, for its completions, its long help and its manuals.
#ifndef TOOLS_HALVANE_COMMANDS_TOOL_OUTLINE_H
#define TOOLS_HALVANE_COMMANDS_TOOL_OUTLINE_H

#include "tools/halvane/completion/program_outline.h"

namespace halvane::tool {

ProgramOutline toolOutline();

}  // namespace halvane::tool

#endif
