#include <algorithm>
#include <climits>
#include <cstddef>
#include <syslog.h>

#include "halvane/platform/os/system_log_internal.h"

namespace halvane {

void writeToSystemLog(int priority, std::string_view text) {
    const auto length = std::min<std::size_t>(text.size(), INT_MAX);
    ::syslog(priority, "%.*s", static_cast<int>(length), text.data());
}

}  // namespace halvane
