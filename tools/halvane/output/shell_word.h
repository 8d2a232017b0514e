// Words for a command line that the user can copy.
#ifndef TOOLS_HALVANE_OUTPUT_SHELL_WORD_H
#define TOOLS_HALVANE_OUTPUT_SHELL_WORD_H

#include <string>
#include <string_view>

namespace halvane::tool {

// Returns the text as one word for a shell: between single quotes unless it consists of ASCII
// letters, digits and the signs of names and numbers. A text that is not safe to show is $'...'
// (POSIX.1-2024, 2.2.4) with its unsafe octets as \xNN.
std::string shellWord(std::string_view text);

}  // namespace halvane::tool

#endif
