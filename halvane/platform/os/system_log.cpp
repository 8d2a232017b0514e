#include <algorithm>
#include <atomic>
#include <climits>
#include <cstddef>
#include <syslog.h>

#include "halvane/platform/os/system_log_internal.h"

namespace halvane {

namespace {

std::atomic<SystemLogger> replacement = nullptr;

}  // namespace

void writeToSystemLog(int priority, std::string_view text) {
    if (const SystemLogger logger = replacement.load(std::memory_order_relaxed)) {
        return logger(priority, text);
    }
    const auto length = std::min<std::size_t>(text.size(), INT_MAX);
    ::syslog(priority, "%.*s", static_cast<int>(length), text.data());
}

void replaceSystemLog(SystemLogger logger) {
    replacement.store(logger, std::memory_order_relaxed);
}

}  // namespace halvane
