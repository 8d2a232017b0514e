// The machine's console, and a file in its place for tests.
//
// Threads: both functions may be called from any thread.
#ifndef HALVANE_PLATFORM_OS_CONSOLE_DEVICE_INTERNAL_H
#define HALVANE_PLATFORM_OS_CONSOLE_DEVICE_INTERNAL_H

#include <string_view>

namespace halvane {

// Opens /dev/console, writes and closes it again. False where it cannot be opened; what it does
// not take is lost.
bool writeToConsoleDevice(std::string_view text);

// Puts another path in its place for the whole process; null puts /dev/console back. The text must
// outlive its use.
void replaceConsoleDevice(const char* path);

}  // namespace halvane

#endif
