// Threads of the library's own.
#ifndef HALVANE_PLATFORM_OS_THREAD_INTERNAL_H
#define HALVANE_PLATFORM_OS_THREAD_INTERNAL_H

#include <functional>
#include <string>
#include <string_view>
#include <thread>

namespace halvane {

// What a thread is called: the end of `label`, which tells more than its beginning, in the 15 bytes
// that Linux has for it, without part of a UTF-8 character in front.
std::string threadName(std::string_view label);

// Starts a thread that bears threadName(label). It takes no signals: those of the program are for
// the threads of the program. Throws std::bad_alloc where the system has no room for one more.
std::thread startThread(std::string_view label, std::function<void()> run);

}  // namespace halvane

#endif
