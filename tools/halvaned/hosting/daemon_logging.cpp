#include "tools/halvaned/hosting/daemon_logging.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <memory>

#include "halvane/base/status.h"
#include "halvane/utils/log.h"

namespace halvane::hosting {

namespace {

constexpr std::array<std::string_view, 4> kNames = {"level", "flags", "rate", "output"};
constexpr std::size_t kLongestValue = 256;
constexpr std::array<std::string_view, 6> kOutputs = {
    "console", "file", "file;stderr", "file;stdout", "syslog", "file;path=/var/log/halvaned.log",
};

template <typename Texts>
bool isAmong(const Texts& texts, std::string_view text) {
    return std::find(std::begin(texts), std::end(texts), text) != std::end(texts);
}

// An entry is "pattern:name=value"; halvane/utils/log.h has the whole of it. The logging system
// keeps each pattern and name for good, so there must be few.
bool isHarmlessEntry(std::string_view entry) {
    const auto colon = entry.find(':');
    if (colon == entry.npos) return false;
    const auto equals = entry.find('=', colon);
    if (equals == entry.npos) return false;
    const auto pattern = entry.substr(0, colon);
    const auto name = entry.substr(colon + 1, equals - colon - 1);
    const auto value = entry.substr(equals + 1);
    if (!isAmong(kDaemonLogCategories, pattern) || !isAmong(kNames, name)) return false;
    return name == "output" ? isAmong(kOutputs, value) : value.size() <= kLongestValue;
}

bool isHarmless(std::string_view control) {
    if (control.starts_with('?')) control.remove_prefix(1);
    if (control.starts_with('+') || control.find('\0') != control.npos) return false;
    while (!control.empty()) {
        const auto comma = std::min(control.find(','), control.size());
        if (!isHarmlessEntry(control.substr(0, comma))) return false;
        control.remove_prefix(std::min(comma + 1, control.size()));
    }
    return true;
}

struct HeapText {
    void operator()(char* text) const { std::free(text); }
};

void log(std::uint32_t level, const char* function, std::string_view line) {
    HALVANE_LOG_AS(&gLogCategory_WiFi, function, level, "%.*s\n", static_cast<int>(line.size()),
                   line.data());
}

}  // namespace

void startLogging(LogPlace place, bool isVerbose) {
    const auto prepare = [&](LogCategory& category) {
        category.defaultLevel = isVerbose ? kLogLevelAll : kLogLevelNotice;
        if (place == LogPlace::Console) category.initConfig = nullptr;
    };
#define HALVANE_PREPARE(name) prepare(gLogCategory_##name);
    HALVANE_WIFI_LOG_CATEGORIES(HALVANE_PREPARE)
#undef HALVANE_PREPARE
}

void logNotice(std::string_view line) {
    log(kLogLevelNotice, "halvaned", line);
}

void logError(std::string_view line) {
    log(kLogLevelError, "halvaned", line);
}

DaemonStatus DaemonLogging::apply(const DaemonLogControls& controls) {
    for (const auto& control : controls) {
        if (control && !isHarmless(*control)) return DaemonStatus::BadRequest;
    }
    auto status = DaemonStatus::Done;
    for (const auto& control : controls) {
        if (!control || control->empty()) continue;
        if (LogControl(control->c_str()) != kStatusOK) status = DaemonStatus::BadRequest;
    }
    return status;
}

std::string DaemonLogging::text() const {
    char* shown = nullptr;
    if (LogUtils_Show(&shown) != kStatusOK) return {};
    const std::unique_ptr<char, HeapText> owner(shown);
    return shown;
}

}  // namespace halvane::hosting
