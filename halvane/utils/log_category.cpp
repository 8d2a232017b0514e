// A category's first test.
#include <algorithm>
#include <new>
#include <strings.h>
#include <utility>

#include "halvane/utils/log_lock_internal.h"
#include "halvane/utils/log_state_internal.h"

namespace halvane::logging {

namespace {

bool isLinked(const LogCategory& category) {
    const LogCategory* other = logState().categories;
    while (other != nullptr && other != &category) other = other->next;
    return other != nullptr;
}

// Keeps the list sorted by name. After LogUtils_Finalize() a category is in it already.
void linkCategory(LogCategory& category) {
    if (isLinked(category)) return;
    LogCategory** place = &logState().categories;
    while (*place != nullptr && ::strcasecmp((*place)->name, category.name) <= 0) {
        place = &(*place)->next;
    }
    category.next = std::exchange(*place, &category);
}

void initializeCategory(LogCategory& category) {
    setCategoryLevel(category, std::max(category.defaultLevel, 0));
    setCategoryPrefix(category);
    linkCategory(category);
    logState().actions.forget(category);
    if (category.initConfig != nullptr) {
        __LogControlLocked(category.initConfig, LogControlSource::Caller);
    }
    __LogCategory_ApplyActions(&category);
    if (category.output != nullptr) return;
    HalvaneStatus status = kStatusOK;
    LogOutput* const console = findOrCreateOutput("console", status);
    if (console != nullptr) setCategoryOutput(category, console);
}

// A category that memory was lacking for is initialised on its next test.
void tryToInitialize(LogCategory& category) try {
    if (category.level == kLogLevelUninitialized) initializeCategory(category);
} catch (const std::bad_alloc&) {
    setCategoryLevel(category, kLogLevelUninitialized);
}

}  // namespace

void setCategoryLevel(LogCategory& category, std::int32_t level) {
    __atomic_store_n(&category.level, level, __ATOMIC_RELAXED);
}

void setCategoryPrefix(LogCategory& category) {
    const std::string_view name = category.name;
    category.prefix = category.name;
    category.prefixLength = name.substr(0, name.find('_')).size();
}

}  // namespace halvane::logging

extern "C" bool __LogCategory_Initialize(LogCategory* category, std::uint32_t level) {
    using namespace halvane::logging;
    if (isReadingLogPreferences()) return false;
    LogUtils_EnsureInitialized();
    bool passes = false;
    if (const LogLock lock; lock) {
        tryToInitialize(*category);
        passes = static_cast<std::int32_t>(level & kLogLevelMask) >= category->level;
    }
    logNotices();
    return passes;
}
