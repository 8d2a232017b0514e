// Control strings.
#include <algorithm>
#include <new>
#include <optional>
#include <string>
#include <string_view>

#include "halvane/base/property_list_value.h"
#include "halvane/base/utf8_internal.h"
#include "halvane/utils/log.h"
#include "halvane/utils/log/lock_internal.h"
#include "halvane/utils/log/output_internal.h"
#include "halvane/utils/log/state_internal.h"
#include "halvane/utils/text/ignore_case_internal.h"

namespace halvane::logging {

namespace {

// Removes the text before `separator`, and the separator; absent if there is no separator.
std::optional<std::string_view> takeUpTo(std::string_view& text, char separator) {
    const auto end = text.find(separator);
    if (end == std::string_view::npos) return std::nullopt;
    const std::string_view taken = text.substr(0, end);
    text.remove_prefix(end + 1);
    return taken;
}

bool takePrefix(std::string_view& text, char prefix) {
    if (!text.starts_with(prefix)) return false;
    text.remove_prefix(1);
    return true;
}

HalvaneStatus setActions(std::string_view entries, LogControlSource source) {
    while (!entries.empty()) {
        const auto pattern = takeUpTo(entries, ':');
        if (!pattern) return kStatusMalformed;
        const auto name = takeUpTo(entries, '=');
        if (!name) return kStatusMalformed;
        const std::string_view value = entries.substr(0, entries.find(','));
        entries.remove_prefix(std::min(value.size() + 1, entries.size()));
        // The name is compared without case, since the setting may replace an active one.
        const bool isForeign = source == LogControlSource::Preferences &&
                               equalsIgnoringCase(*name, "output") && isCallbackOutput(value);
        if (!isForeign) logState().actions.set(*pattern, *name, value);
    }
    return kStatusOK;
}

}  // namespace

LogControlResult __LogControlLocked(const char* control, LogControlSource source) {
    auto& actions = logState().actions;
    if (control == nullptr) {
        actions.clear();
        return {};
    }
    std::string_view entries = control;
    const bool isDefault = takePrefix(entries, '?');
    const bool isPersistent = takePrefix(entries, '+');

    actions.age();
    const HalvaneStatus parsed = setActions(entries, source);
    if (parsed != kStatusOK) return {parsed};
    const HalvaneStatus applied = __LogCategory_ApplyActions(nullptr);
    if (source == LogControlSource::Preferences) return {applied};

    // This also follows a failed default, since the preferences may work.
    if (isDefault) readLogPreferences();
    if (isDefault || !isPersistent || applied != kStatusOK) return {applied};
    return {canStoreNewActions() ? kStatusOK : HalvaneStatus(kStatusConversionFailed), true};
}

}  // namespace halvane::logging

extern "C" HalvaneStatus LogControl(const char* control) try {
    using namespace halvane::logging;
    LogUtils_EnsureInitialized();
    LogControlResult result{kStatusUnsupported};
    if (const LogLock lock; lock) result = __LogControlLocked(control, LogControlSource::Caller);
    if (result.mustStore) {
        const HalvaneStatus written = writeLogPreferences();
        if (written != kStatusOK) result.status = written;
    }
    logNotices();
    return result.status;
} catch (const std::bad_alloc&) {
    return kStatusNoMemory;
}

extern "C" HalvaneStatus LogControlCF(const HalvanePropertyListValue* control) {
    const auto* const text = control != nullptr ? control->as<std::string>() : nullptr;
    if (text == nullptr || !halvane::isUtf8(*text)) return kStatusConversionFailed;
    return text->empty() ? kStatusOK : LogControl(text->c_str());
}
