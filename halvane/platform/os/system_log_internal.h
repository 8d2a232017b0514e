// The system log.
//
// Threads: the function may be called from any thread.
#ifndef HALVANE_PLATFORM_OS_SYSTEM_LOG_INTERNAL_H
#define HALVANE_PLATFORM_OS_SYSTEM_LOG_INTERNAL_H

#include <string_view>

namespace halvane {

// Passes a text to syslog(3); a NUL ends it.
void writeToSystemLog(int priority, std::string_view text);

}  // namespace halvane

#endif
