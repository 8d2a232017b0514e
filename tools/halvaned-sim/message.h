// What the program says to people.
#ifndef TOOLS_HALVANED_SIM_MESSAGE_H
#define TOOLS_HALVANED_SIM_MESSAGE_H

#include <string>

namespace halvane::sim {

// "halvaned-sim: MESSAGE" on standard error, with what could command a terminal escaped.
void complain(const std::string& message);

// Puts text on standard output, at once. False, and it has complained, where that fails.
bool print(const std::string& text);

}  // namespace halvane::sim

#endif
