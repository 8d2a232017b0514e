// The system log, and another in its place for tests.
//
// Threads: both functions may be called from any thread.
#ifndef HALVANE_PLATFORM_OS_SYSTEM_LOG_INTERNAL_H
#define HALVANE_PLATFORM_OS_SYSTEM_LOG_INTERNAL_H

#include <string_view>

namespace halvane {

using SystemLogger = void (*)(int priority, std::string_view text);

// Hands a text to syslog(3), cut where it holds a NUL.
void writeToSystemLog(int priority, std::string_view text);

// Puts `logger` in its place for the whole process; null puts syslog(3) back.
void replaceSystemLog(SystemLogger logger);

}  // namespace halvane

#endif
