// Messages of the program to people.
#ifndef TOOLS_HALVANED_SIM_MESSAGE_H
#define TOOLS_HALVANED_SIM_MESSAGE_H

#include <string>

namespace halvane::sim {

// Prints "halvaned-sim: MESSAGE" on standard error. Characters that could control a terminal are
// escaped.
void complain(const std::string& message);

// Writes text to standard output at once. If that fails, prints a message and returns false.
bool print(const std::string& text);

}  // namespace halvane::sim

#endif
