// Signals that a command takes one by one, where it waits for them and for other things at once.
//
// For the program's only thread.
#ifndef TOOLS_HALVANE_COMMANDS_SIGNAL_QUEUE_H
#define TOOLS_HALVANE_COMMANDS_SIGNAL_QUEUE_H

#include <csignal>
#include <initializer_list>
#include <optional>

namespace halvane::tool {

class SignalQueue {
  public:
    // Takes these signals from now on. One that was ignored when the program started stays ignored.
    // Throws std::bad_alloc if the system has no room for it.
    explicit SignalQueue(std::initializer_list<int> signals);
    SignalQueue(const SignalQueue&) = delete;
    SignalQueue& operator=(const SignalQueue&) = delete;
    // Signals have their effects again, also those that were not taken.
    ~SignalQueue();

    // Is readable while a signal waits.
    int descriptor() const { return descriptor_; }

    // The next signal; absent if none waits.
    std::optional<int> take();

  private:
    sigset_t before_{};
    int descriptor_ = -1;
};

}  // namespace halvane::tool

#endif
