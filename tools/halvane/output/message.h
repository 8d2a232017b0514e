// Messages to people, on standard error.
#ifndef TOOLS_HALVANE_OUTPUT_MESSAGE_H
#define TOOLS_HALVANE_OUTPUT_MESSAGE_H

#include <string>
#include <string_view>
#include <vector>

namespace halvane::tool {

// Prints "halvane: MESSAGE". The message may hold arguments and file names unchanged, because
// characters that could control a terminal are escaped.
void complain(const std::string& message);

// The same, with the lines of `hint` below it, each indented by two blanks. They say what to do.
void complain(const std::string& message, std::string_view hint);

// The lines as such a hint.
std::string hintOf(const std::vector<std::string>& lines);

// How messages name an input: "standard input" for "-", two quotes for an empty name.
std::string inputName(const std::string& path);

}  // namespace halvane::tool

#endif
