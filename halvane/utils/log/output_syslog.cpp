// The output "syslog": the system log.
#include <cstddef>

#include "halvane/base/status.h"
#include "halvane/platform/os/system_log_internal.h"
#include "halvane/utils/log/output_internal.h"

namespace halvane::logging {

namespace {

constexpr int kPriorityWithoutLevel = 5;  // LOG_NOTICE (RFC 5424 clause 6.2.1)
constexpr std::size_t kMaxLevelText = 31;

// If the output has a level, the message's level becomes the priority unchanged, although it is not
// a syslog severity.
void writeToSyslog(LogOutput& output, const LogMessage& message, std::string_view text) {
    if (text.ends_with('\n')) text.remove_suffix(1);
    const int level = static_cast<int>(message.level & kLogLevelMask);
    writeToSystemLog(output.syslogLevel < 0 ? kPriorityWithoutLevel : level, text);
}

}  // namespace

HalvaneStatus __LogOutputSyslog_Setup(LogOutput& output, std::string_view parameters) {
    output.type = kLogOutputSyslog;
    output.writer = writeToSyslog;
    return forEachParameter(
        parameters, [&output](std::string_view key, std::string_view value) -> HalvaneStatus {
            if (key != "level") return kStatusUnknownParameter;
            const std::string text(value.substr(0, kMaxLevelText));
            output.syslogLevel = __LogCategory_StringToLevel(text.c_str());
            return kStatusOK;
        });
}

}  // namespace halvane::logging
