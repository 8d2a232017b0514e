// The library's own threads.
#ifndef HALVANE_PLATFORM_OS_THREAD_INTERNAL_H
#define HALVANE_PLATFORM_OS_THREAD_INTERNAL_H

#include <functional>
#include <string>
#include <string_view>
#include <thread>

namespace halvane {

// Returns the name of a thread: the last 15 bytes of `label`, which is Linux's limit. The end of a
// label says more than its beginning. A partial UTF-8 character at the front is dropped.
std::string threadName(std::string_view label);

// Starts a thread with the name threadName(label). It receives no signals, since the program's
// signals are for the program's threads. Throws std::bad_alloc if the system has no room for
// another thread.
std::thread startThread(std::string_view label, std::function<void()> run);

}  // namespace halvane

#endif
