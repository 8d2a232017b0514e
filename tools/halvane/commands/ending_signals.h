// Signals as the regular end of a command that does not end by itself.
#ifndef TOOLS_HALVANE_COMMANDS_ENDING_SIGNALS_H
#define TOOLS_HALVANE_COMMANDS_ENDING_SIGNALS_H

namespace halvane::tool {

// From now on SIGINT and SIGTERM end the program at once with kExitDone, even while it waits for a
// reader of its output. Buffered standard output is lost. A signal that was ignored when the
// program started stays ignored. A signal that was blocked at the start is unblocked in the calling
// thread.
void endOnSignals() noexcept;

}  // namespace halvane::tool

#endif
