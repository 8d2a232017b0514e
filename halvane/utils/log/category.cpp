// The first test of a category.
#include <algorithm>
#include <cstdint>
#include <new>
#include <string_view>
#include <strings.h>
#include <utility>

#include "halvane/base/status.h"
#include "halvane/utils/log.h"
#include "halvane/utils/log/lock_internal.h"
#include "halvane/utils/log/output_internal.h"
#include "halvane/utils/log/state_internal.h"

namespace halvane::logging {

namespace {

// Returns the link of the list that points to the category; the null one if it is not in the list.
LogCategory** linkTo(const LogCategory& category) {
    LogCategory** link = &logState().categories;
    while (*link != nullptr && *link != &category) link = &(*link)->next;
    return link;
}

// Keeps the list sorted by name. After LogUtils_Finalize() a category is already in the list.
void linkCategory(LogCategory& category) {
    if (*linkTo(category) != nullptr) return;
    LogCategory** place = &logState().categories;
    while (*place != nullptr && ::strcasecmp((*place)->name, category.name) <= 0) {
        place = &(*place)->next;
    }
    category.next = std::exchange(*place, &category);
}

// Returns whether the settings must be stored.
bool initializeCategory(LogCategory& category) {
    bool mustStore = false;
    setCategoryLevel(category, std::max(category.defaultLevel, 0));
    setCategoryPrefix(category);
    linkCategory(category);
    logState().actions.forget(category);
    if (category.initConfig != nullptr) {
        mustStore = __LogControlLocked(category.initConfig, LogControlSource::Caller).mustStore;
    }
    __LogCategory_ApplyActions(&category);
    if (category.output != nullptr) return mustStore;
    if (const auto console = findOrCreateOutput("console")) setCategoryOutput(category, *console);
    return mustStore;
}

// If memory runs out, the category is initialised on its next test.
bool tryToInitialize(LogCategory& category) try {
    return category.level == kLogLevelUninitialized && initializeCategory(category);
} catch (const std::bad_alloc&) {
    setCategoryLevel(category, kLogLevelUninitialized);
    return false;
}

void removeCategory(LogCategory& category) {
    LogCategory** const link = linkTo(category);
    if (*link == nullptr) return;
    *link = std::exchange(category.next, nullptr);
    setCategoryLevel(category, kLogLevelUninitialized);
    if (LogOutput* const output = std::exchange(category.output, nullptr)) --output->refCount;
    logState().actions.forget(category);
    deleteUnusedOutputs();
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
    bool mustStore = false;
    if (const LogLock lock; lock) {
        mustStore = tryToInitialize(*category);
        passes = static_cast<std::int32_t>(level & kLogLevelMask) >= category->level;
    }
    if (mustStore) writeLogPreferences();
    logNotices();
    return passes;
}

extern "C" HalvaneStatus LogCategory_Remove(LogCategory* category) {
    const halvane::logging::LogLock lock;
    if (!lock) return kStatusUnsupported;
    halvane::logging::removeCategory(*category);
    return kStatusOK;
}
