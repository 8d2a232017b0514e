// The destinations of messages: the outputs that control strings name.
#ifndef HALVANE_UTILS_LOG_OUTPUT_INTERNAL_H
#define HALVANE_UTILS_LOG_OUTPUT_INTERNAL_H

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "halvane/base/result.h"
#include "halvane/base/status.h"
#include "halvane/utils/log.h"
#include "halvane/utils/log/categories.h"
#include "halvane/utils/log/file_internal.h"

enum LogOutputType { kLogOutputFile = 2, kLogOutputSyslog = 6, kLogOutputCallback = 11 };

using LogOutputWriter = void (*)(LogOutput& output, const LogMessage& message,
                                 std::string_view text);

struct LogOutput {
    unsigned refCount = 0;
    std::string spec;  // "type;key=value;...": equal specifications share one output
    LogOutputWriter writer = nullptr;
    LogOutputType type = kLogOutputFile;

    halvane::logging::LogFile file;                     // kLogOutputFile
    std::int32_t syslogLevel = kLogLevelUninitialized;  // kLogOutputSyslog; negative means none
    LogCallback func = nullptr;                         // kLogOutputCallback
    void* arg = nullptr;
};

namespace halvane::logging {

// Creates the output of a specification, or returns the status of the failure.
Result<std::unique_ptr<LogOutput>, HalvaneStatus> __LogOutputCreate(const std::string& spec);

bool isCallbackOutput(std::string_view spec);

// Parse the parameters after the type, and set type and writer.
HalvaneStatus __LogOutputConsole_Setup(LogOutput& output, std::string_view parameters);
HalvaneStatus __LogOutputFile_Setup(LogOutput& output, std::string_view parameters);
HalvaneStatus __LogOutputSyslog_Setup(LogOutput& output, std::string_view parameters);
HalvaneStatus __LogOutputCallback_Setup(LogOutput& output, std::string_view parameters);

// Calls take(key, value), which returns a status, for each part of "key=value;key=value" until one
// fails. A ';' at the end adds no part.
template <typename Take>
HalvaneStatus forEachParameter(std::string_view parameters, Take take) {
    while (!parameters.empty()) {
        const std::string_view part = parameters.substr(0, parameters.find(';'));
        parameters.remove_prefix(std::min(part.size() + 1, parameters.size()));
        const auto equals = part.find('=');
        if (equals == std::string_view::npos) return kStatusMalformed;
        const HalvaneStatus status = take(part.substr(0, equals), part.substr(equals + 1));
        if (status != kStatusOK) return status;
    }
    return kStatusOK;
}

}  // namespace halvane::logging

#endif
