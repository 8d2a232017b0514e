// The report of all categories and settings.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <unistd.h>

#include "halvane/base/status.h"
#include "halvane/platform/os/process_internal.h"
#include "halvane/utils/log.h"
#include "halvane/utils/log/lock_internal.h"
#include "halvane/utils/log/settings_internal.h"
#include "halvane/utils/log/state_internal.h"
#include "halvane/utils/printf/std_string_internal.h"
#include "halvane/utils/scan/up_ticks.h"

namespace halvane::logging {

namespace {

constexpr const char* kFunction = "OSStatus LogUtils_Show(char **)";

std::string levelName(const LogCategory& category) {
    std::array<char, kLogLevelStringSize> name;
    return __LogCategory_LevelToString(static_cast<std::uint32_t>(category.level), name.data());
}

struct ColumnWidths {
    int name = 0;
    int level = 0;
};

ColumnWidths columnWidths() {
    const auto widen = [](int& width, std::size_t length) {
        width = std::max(width, static_cast<int>(length));
    };
    ColumnWidths widths;
    for (const auto* category = logState().categories; category; category = category->next) {
        widen(widths.name, std::strlen(category->name));
        widen(widths.level, levelName(*category).size());
    }
    return widths;
}

void appendCategory(std::string& text, const LogCategory& category, ColumnWidths widths) {
    appendPrintF(text,
                 "  Category: %-*s  level %-*s  flags 0x%02X  rate %u/%-4llu  output '%s'\n%s",
                 widths.name, category.name, widths.level, levelName(category).c_str(),
                 category.flags, category.rateMax,
                 static_cast<unsigned long long>(UpTicksToMilliseconds(category.ratePeriod)),
                 category.output != nullptr ? category.output->spec.c_str() : "",
                 category.next == nullptr ? "\n" : "");
}

std::string report() {
    const LogState& state = logState();
    std::string text = stringPrintF("=== LogUtils (%s, PID %llu) ===\n", programName().c_str(),
                                    static_cast<unsigned long long>(::getpid()));
    const ColumnWidths widths = columnWidths();
    for (const auto* category = state.categories; category; category = category->next) {
        appendCategory(text, *category, widths);
    }
    for (const LogAction& action : state.actions) {
        appendPrintF(text, "  Action: %s:%s=%s\n", action.pattern.c_str(), action.name.c_str(),
                     action.value.c_str());
    }
    return text;
}

// Creates a heap string for a C caller.
HalvaneStatus makeReport(char*& text) try {
    const LogLock lock;
    if (!lock) return kStatusUnsupported;
    text = ::strdup(report().c_str());
    return text != nullptr ? kStatusOK : kStatusNoMemory;
} catch (const std::bad_alloc&) {
    return kStatusNoMemory;
}

}  // namespace

}  // namespace halvane::logging

extern "C" HalvaneStatus LogUtils_Show(char** out) {
    using namespace halvane::logging;
    LogUtils_EnsureInitialized();
    char* text = nullptr;
    const HalvaneStatus status = makeReport(text);
    if (status != kStatusOK) {
        HALVANE_LOG_AS(&gLogCategory_LogUtils, kFunction, kLogLevelError, "### ERROR: %#m\n",
                       status);
        return status;
    }
    if (out != nullptr) {
        *out = text;
        return kStatusOK;
    }
    HALVANE_LOG_AS(&gLogCategory_LogUtils, kFunction, kLogLevelMax, "%s", text);
    std::free(text);
    return kStatusOK;
}
