// What the parts of the logging system share: its state, the lock over it, and the steps that run
// with the lock held.
//
// Nothing here logs. What must be told is noted in the state, and logged by the entry point once
// it has let the lock go.
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
    std::vector<std::string> notices;                           // still to be logged
    std::string lastNotice;                                     // said before
};

// REQUIRES: the lock, but for LogUtils_Finalize().
LogState& logState();

// Where a control string comes from.
enum class LogControlSource { Caller, Preferences };

struct LogControlResult {
    HalvaneStatus status = kStatusOK;
    bool mustStore = false;  // what writeLogPreferences() is for, once the lock is let go
};

// Applies a control string; null frees all actions. One from the preferences is never stored and
// does not make them be read again, and it sets no callback outputs: its pointers are those of
// another process.
LogControlResult __LogControlLocked(const char* control, LogControlSource source);

// Applies what the preferences hold under "logconfig". Nothing logs meanwhile.
void readLogPreferences();
bool isReadingLogPreferences();

// Stores all actions under "logconfig" that can be stored; it may wait for another process. Without
// memory the status says so.
// REQUIRES: not the lock.
HalvaneStatus writeLogPreferences();

// Whether each new action can be stored.
bool canStoreNewActions();

// Applies all actions to the initialised categories, or to `only`, and deletes the outputs that no
// category is left with. The status is that of the new actions; always success for `only`.
HalvaneStatus __LogCategory_ApplyActions(LogCategory* only);

// The output of a specification, found or made; a status where it cannot be had.
Result<LogOutput*, HalvaneStatus> findOrCreateOutput(const std::string& spec);

// What settings change in a category. The level is read without the lock. An output's reference
// moves; the prefix follows from the name.
void setCategoryLevel(LogCategory& category, std::int32_t level);
void setCategoryOutput(LogCategory& category, LogOutput* output);
void setCategoryPrefix(LogCategory& category);

void deleteUnusedOutputs();

// Logs the notices. REQUIRES: not the lock.
void logNotices();

}  // namespace halvane::logging

#endif
