// The settings in the preferences.
#include "halvane/platform/plist/preferences.h"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <new>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "halvane/base/status.h"
#include "halvane/platform/plist/xml_text_internal.h"
#include "halvane/utils/log/lock_internal.h"
#include "halvane/utils/log/settings_internal.h"
#include "halvane/utils/log/state_internal.h"
#include "halvane/utils/printf/std_string_internal.h"

int gLogUtilsInitializing = 0;

namespace halvane::logging {

namespace {

constexpr std::string_view kPreferenceKey = "logconfig";

std::atomic<bool> isBeingRead = false;
thread_local bool isReader = false;

// Nothing logs during its lifetime.
class Initializing {
  public:
    Initializing() { set(true); }
    ~Initializing() { set(false); }
    Initializing(const Initializing&) = delete;
    Initializing& operator=(const Initializing&) = delete;

  private:
    static void set(bool isInitializing) {
        isReader = isInitializing;
        isBeingRead = isInitializing;
        __atomic_store_n(&gLogUtilsInitializing, isInitializing ? 1 : 0, __ATOMIC_SEQ_CST);
    }
};

bool isStorable(const LogAction& action) {
    return !refusedXmlText(action.pattern) && !refusedXmlText(action.name) &&
           !refusedXmlText(action.value);
}

// Returns all storable settings as one text.
std::string joinedActions() {
    std::string text;
    for (const LogAction& action : logState().actions) {
        if (!isStorable(action)) continue;
        if (!text.empty()) text += ',';
        text.append(action.pattern).append(":").append(action.name).append("=");
        text.append(action.value);
    }
    // Reading the text back removes a leading '?' and '+', which must not be those of a pattern.
    const bool looksPrefixed = text.starts_with('?') || text.starts_with('+');
    return looksPrefixed ? text.insert(0, "?+") : text;
}

// Why the preferences are of no use. Without words for that it is the status.
std::string reasonOf(const PreferenceResult& result) {
    if (result.error == 0) return stringPrintF("could not be used: %#m", result.status);
    return "in " + result.path +
           " could not be used: " + std::generic_category().message(result.error);
}

// Adds a notice about the preferences, unless the last one was the same.
void notePreferences(const PreferenceResult& result) {
    LogState& state = logState();
    std::string notice;
    if (!result.setAside.empty()) {
        notice = "### The preferences were damaged and stand aside in " + result.setAside;
    } else if (result.status != kStatusOK && result.status != kStatusBadPath) {
        notice = "### The preferences " + reasonOf(result);
    }
    if (notice == state.lastNotice) return;
    if (!notice.empty()) state.notices.push_back(notice);
    state.lastNotice = std::move(notice);
}

}  // namespace

// While another thread reads, this waits for it at the lock, so that its messages are not lost.
bool isReadingLogPreferences() {
    if (__atomic_load_n(&gLogUtilsInitializing, __ATOMIC_SEQ_CST) == 0) return false;
    return isReader || !isBeingRead;
}

// If memory runs out, the preferences count as empty.
void readLogPreferences() try {
    const Initializing initializing;
    const auto preference = readPreference(logState().applicationID, kPreferenceKey);
    notePreferences(preference);
    if (preference.value) {
        __LogControlLocked(preference.value->c_str(), LogControlSource::Preferences);
    }
} catch (const std::bad_alloc&) {
}

bool canStoreNewActions() {
    const LogActionList& actions = logState().actions;
    return std::ranges::all_of(
        actions.newPlaces(), [&actions](std::size_t place) { return isStorable(actions[place]); });
}

// Messages and control strings continue meanwhile. The settings are taken from the state during the
// turn, so that no thread replaces newer settings by older ones.
HalvaneStatus writeLogPreferences() try {
    const LogStoringTurn turn;
    std::string application;
    std::string text;
    {
        const LogLock lock;
        if (!lock) return kStatusUnsupported;
        application = logState().applicationID;
        text = joinedActions();
    }
    const auto written = writePreference(application, kPreferenceKey, text);
    if (const LogLock lock; lock) notePreferences(written);
    return written.status;
} catch (const std::bad_alloc&) {
    return kStatusNoMemory;
}

}  // namespace halvane::logging
