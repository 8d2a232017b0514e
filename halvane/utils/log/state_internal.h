// The common parts of the logging system: its state, its lock, and the steps that run under the
// lock.
//
// Nothing here logs. A notice is stored in the state, and the entry point logs it after it has
// released the lock.
#ifndef HALVANE_UTILS_LOG_STATE_INTERNAL_H
#define HALVANE_UTILS_LOG_STATE_INTERNAL_H

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "halvane/base/result.h"
#include "halvane/base/status.h"
#include "halvane/utils/log.h"
#include "halvane/utils/log/output_internal.h"
#include "halvane/utils/log/settings_internal.h"

namespace halvane::logging {

struct LogState {
    std::string applicationID;          // empty: the current application
    LogCategory* categories = nullptr;  // sorted by name
    LogActionList actions;
    std::map<std::string, std::unique_ptr<LogOutput>> outputs;  // by specification
    std::vector<std::string> notices;                           // not yet logged
    std::string lastNotice;                                     // the last one that was logged
};

// REQUIRES: the caller holds the lock, except in LogUtils_Finalize().
LogState& logState();

// The origin of a control string.
enum class LogControlSource { Caller, Preferences };

struct LogControlResult {
    HalvaneStatus status = kStatusOK;
    bool mustStore = false;  // the caller calls writeLogPreferences() after it has released the
                             // lock
};

// Applies a control string; null removes all actions. A string from the preferences is never stored
// and does not cause them to be read again. It cannot set callback outputs, since its pointers
// belong to another process.
LogControlResult __LogControlLocked(const char* control, LogControlSource source);

// Applies the preferences under "logconfig". Nothing logs meanwhile.
void readLogPreferences();
bool isReadingLogPreferences();

// Stores all storable actions under "logconfig"; it may wait for another process. The status tells
// if memory ran out.
// REQUIRES: the caller does not hold the lock.
HalvaneStatus writeLogPreferences();

// Returns whether all new actions can be stored.
bool canStoreNewActions();

// Applies all actions to the initialised categories, or only to `only`, and deletes outputs that no
// category uses any more. Returns the status of the new actions; success for `only`.
HalvaneStatus __LogCategory_ApplyActions(LogCategory* only);

// Finds or creates the output of a specification, or returns the status of the failure.
Result<LogOutput*, HalvaneStatus> findOrCreateOutput(const std::string& spec);

// Set the parts of a category that settings change. The level is read without the lock. Setting the
// output moves a reference. The prefix follows from the name.
void setCategoryLevel(LogCategory& category, std::int32_t level);
void setCategoryOutput(LogCategory& category, LogOutput* output);
void setCategoryPrefix(LogCategory& category);

void deleteUnusedOutputs();

// Logs the notices.
// REQUIRES: the caller does not hold the lock.
void logNotices();

}  // namespace halvane::logging

#endif
