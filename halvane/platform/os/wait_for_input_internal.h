// Waits for a descriptor.
#ifndef HALVANE_PLATFORM_OS_WAIT_FOR_INPUT_INTERNAL_H
#define HALVANE_PLATFORM_OS_WAIT_FOR_INPUT_INTERNAL_H

#include <chrono>
#include <optional>

#include "halvane/platform/os/wake_event_internal.h"

namespace halvane {

using WaitEnd = std::optional<std::chrono::steady_clock::time_point>;

// Waits until `descriptor` has one of `events`, as poll() has them, or has failed; until `wake` is
// signalled, which this clears; until `end`, if there is one; or until a signal was handled.
// Returns false if it knows that the descriptor has nothing to tell.
bool waitForInput(int descriptor, short events, WakeEvent& wake, const WaitEnd& end);

}  // namespace halvane

#endif
