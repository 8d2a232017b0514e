// The start and the end of the logging system.
#include <atomic>
#include <new>
#include <string>
#include <vector>

#include "halvane/base/status.h"
#include "halvane/utils/log.h"
#include "halvane/utils/log/flush_internal.h"
#include "halvane/utils/log/lock_internal.h"
#include "halvane/utils/log/state_internal.h"

namespace halvane::logging {

namespace {

std::atomic<bool> isInitialized = false;

// Never destroyed: code that runs while the process ends may log too.
union Immortal {
    Immortal() : state() {}
    ~Immortal() {}
    LogState state;
};

}  // namespace

LogState& logState() {
    static Immortal immortal;
    return immortal.state;
}

void logNotices() {
    std::vector<std::string> notices;
    if (const LogLock lock; lock) notices.swap(logState().notices);
    for (const std::string& notice : notices) {
        HALVANE_LOG(&gLogCategory_LogUtils, kLogLevelWarning, "%s\n", notice.c_str());
    }
}

}  // namespace halvane::logging

using halvane::logging::LogLock;
using halvane::logging::logState;

extern "C" HalvaneStatus LogUtils_EnsureInitialized() {
    using namespace halvane::logging;
    if (isInitialized.load(std::memory_order_acquire) || isReadingLogPreferences()) {
        return kStatusOK;
    }
    if (const LogLock lock; lock && !isInitialized.exchange(true)) readLogPreferences();
    logNotices();
    return kStatusOK;
}

extern "C" void LogSetAppID(const char* appID) try {
    if (const LogLock lock; lock) logState().applicationID = appID != nullptr ? appID : "";
} catch (const std::bad_alloc&) {
    // The application does not change.
}

extern "C" void LogUtils_Finalize() {
    halvane::logging::stopFlushing();
    auto& state = logState();
    for (LogCategory* category = state.categories; category != nullptr; category = category->next) {
        halvane::logging::setCategoryLevel(*category, kLogLevelUninitialized);
        category->output = nullptr;
    }
    state.actions.clear();
    state.outputs.clear();
    state.applicationID.clear();
}
