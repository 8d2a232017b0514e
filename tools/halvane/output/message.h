// Messages to people, on standard error.
#ifndef TOOLS_HALVANE_OUTPUT_MESSAGE_H
#define TOOLS_HALVANE_OUTPUT_MESSAGE_H

#include <string>

namespace halvane::tool {

// "halvane: MESSAGE". Arguments and file names may stand in it as they came: what could command a
// terminal is escaped.
void complain(const std::string& message);

// How messages name an input: "standard input" for "-", two quotes for an empty name.
std::string inputName(const std::string& path);

}  // namespace halvane::tool

#endif
