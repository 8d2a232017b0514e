// Signals that end a command which has no end of its own, as their user means it to end.
#ifndef TOOLS_HALVANE_COMMANDS_ENDING_SIGNALS_H
#define TOOLS_HALVANE_COMMANDS_ENDING_SIGNALS_H

namespace halvane::tool {

// From now on SIGINT and SIGTERM end the program with kExitDone, at once and whatever it waits for:
// output that nobody reads, too. What standard output holds by then is not written. A signal that
// the program was started to ignore stays ignored; one that it was started to block is taken, by
// the calling thread.
void endOnSignals() noexcept;

}  // namespace halvane::tool

#endif
