// Signals as the regular end of a command that does not end by itself.
//
// A thread of its own waits for the signals. They run no handler, and end the program whatever its
// other threads are doing.
#ifndef TOOLS_HALVANE_COMMANDS_ENDING_SIGNALS_H
#define TOOLS_HALVANE_COMMANDS_ENDING_SIGNALS_H

namespace halvane::tool {

// Takes SIGINT and SIGTERM until the program ends. Until endOnSignals() they end it as by default.
// A signal that was ignored when the program started stays ignored. One that was blocked is taken.
// Throws std::bad_alloc if the system has no room for another thread; the signals are then as
// before.
// REQUIRES: called once, before the program starts other threads.
void takeEndingSignals();

// From now on the signals end the program at once with kExitDone, even while it waits for a reader
// of its output. Buffered standard output is lost. Any thread may call this.
// REQUIRES: takeEndingSignals() has returned.
void endOnSignals() noexcept;

}  // namespace halvane::tool

#endif
