// The settings that the preferences keep.
#include <new>

#include "halvane/platform/preferences.h"
#include "halvane/utils/log_state_internal.h"

int gLogUtilsInitializing = 0;

namespace halvane::logging {

namespace {

constexpr std::string_view kPreferenceKey = "logconfig";

void setInitializing(int isInitializing) {
    __atomic_store_n(&gLogUtilsInitializing, isInitializing, __ATOMIC_RELAXED);
}

// Nothing logs while it lives.
class Initializing {
  public:
    Initializing() { setInitializing(1); }
    ~Initializing() { setInitializing(0); }
    Initializing(const Initializing&) = delete;
    Initializing& operator=(const Initializing&) = delete;
};

std::string joinedActions() {
    std::string text;
    for (const LogAction& action : logState().actions) {
        if (!text.empty()) text += ',';
        text.append(action.pattern).append(":").append(action.name).append("=");
        text.append(action.value);
    }
    return text;
}

void noteDamage(const PreferenceResult& result) {
    if (result.setAside.empty()) return;
    logState().notices.push_back("### The preferences were damaged and stand aside in " +
                                 result.setAside);
}

}  // namespace

bool isReadingLogPreferences() {
    return __atomic_load_n(&gLogUtilsInitializing, __ATOMIC_RELAXED) != 0;
}

// Without memory it is as though they held nothing.
void readLogPreferences() try {
    const Initializing initializing;
    const auto preference = readPreference(logState().applicationID, kPreferenceKey);
    noteDamage(preference);
    if (preference.value) {
        __LogControlLocked(preference.value->c_str(), LogControlSource::Preferences);
    }
} catch (const std::bad_alloc&) {
}

HalvaneStatus writeLogPreferences() {
    const auto written = writePreference(logState().applicationID, kPreferenceKey, joinedActions());
    noteDamage(written);
    return written.status;
}

}  // namespace halvane::logging
