// Control strings of the log, and messages.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "halvane/base/property_list_value.h"
#include "halvane/base/status.h"
#include "halvane/utils/log.h"

#include "bench/foreign_bytes.h"
#include "bench/growth.h"

namespace bench {

namespace {

// Each message makes at least one system call.
constexpr std::size_t kMostSettings = 1024;

HALVANE_LOG_CATEGORY(Bench, kLogLevelInfo, 0, nullptr);

std::string controlOf(std::size_t index) {
    return "Pattern" + std::to_string(index) + ":level=error";
}

// Settings belong to the process. Each measurement starts without any.
bool forgetSettings() {
    return LogControl(nullptr) == kStatusOK;
}

// With a pattern that the category's name matches.
std::string outputControlOf(std::size_t index) {
    std::string control = "Bench";
    for (const char digit : std::to_string(index)) control.append({digit, '*'});
    return control + ":output=file;path=/dev/null";
}

bool applyAll(std::size_t count, std::string (*make)(std::size_t) = controlOf) {
    for (std::size_t i = 0; i < count; ++i) {
        if (LogControl(make(i).c_str()) != kStatusOK) return false;
    }
    return true;
}

void addControl(const char* row, std::size_t most, std::string (*make)(std::size_t)) {
    addGrowth(row, most, make, [](const std::string& control) {
        return forgetSettings() && LogControl(control.c_str()) == kStatusOK;
    });
}

void addControlRows() {
    addGrowth(
        "LogControl: a new pattern at each call", kMostSettings, [](std::size_t n) { return n; },
        [](std::size_t n) { return forgetSettings() && applyAll(n); });
    addGrowth(
        "LogControl: a new pattern for an output at each call", kMostSettings,
        [](std::size_t n) {
            LogIsEnabled(&gLogCategory_Bench, kLogLevelInfo);
            return n;
        },
        [](std::size_t n) { return forgetSettings() && applyAll(n, outputControlOf); });
    addGrowth(
        "LogControl: the same pattern at each call", kMostSettings, [](std::size_t n) { return n; },
        [](std::size_t n) {
            if (!forgetSettings()) return false;
            for (std::size_t i = 0; i < n; ++i) {
                if (LogControl("Pattern:level=error") != kStatusOK) return false;
            }
            return true;
        });
    addControl("LogControl: many settings of one pattern", kMostSettings, [](std::size_t n) {
        return repeated("Pattern:level=error,", n - 1) + "Pattern:level=info";
    });
    addControl("LogControl: a long pattern", 65536,
               [](std::size_t n) { return std::string(n, 'a') + ":level=error"; });
    addControl("LogControl: a pattern of repetitions", 65536,
               [](std::size_t n) { return repeated("a*", n / 2) + ":level=error"; });
    addGrowth(
        "LogControlCF: a long pattern", 65536,
        [](std::size_t n) {
            return halvane::PropertyListValue(repeated("\xC3\xA9", n / 2) + ":level=error");
        },
        [](const halvane::PropertyListValue& control) {
            return forgetSettings() && LogControlCF(&control) == kStatusOK;
        });
}

void addMessageRows() {
    addGrowth(
        "LogUtils_Show: of settings", kMostSettings,
        [](std::size_t n) {
            requireRow("LogUtils_Show", forgetSettings() && applyAll(n));
            return n;
        },
        [](std::size_t) {
            char* text = nullptr;
            if (LogUtils_Show(&text) != kStatusOK) return false;
            std::free(text);
            return true;
        });
    addGrowth(
        "LogPrintF: a long message", 65536,
        [](std::size_t n) {
            LogIsEnabled(&gLogCategory_Bench, kLogLevelInfo);
            requireRow("LogPrintF", LogControl("^Bench$:output=file;path=/dev/null") == kStatusOK);
            return std::string(n, 'a');
        },
        [](const std::string& text) {
            return LogPrintF(&gLogCategory_Bench, "bench", kLogLevelInfo, "%s\n", text.c_str()) > 0;
        });
}

}  // namespace

void logToNobody() {
    const auto quiet = [](LogCategory& category) {
        category.initConfig = nullptr;
        category.defaultLevel = kLogLevelOff;
    };
#define HALVANE_BENCH_CATEGORY(name) quiet(gLogCategory_##name);
    HALVANE_WIFI_LOG_CATEGORIES(HALVANE_BENCH_CATEGORY)
#undef HALVANE_BENCH_CATEGORY
}

void addLogRows() {
    addControlRows();
    addMessageRows();
}

}  // namespace bench
