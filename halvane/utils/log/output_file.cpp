// The output "file": a file, optionally with rotation, or a standard stream.
#include <cstdio>

#include "halvane/base/status.h"
#include "halvane/utils/log/level.h"
#include "halvane/utils/log/output_internal.h"

namespace halvane::logging {

namespace {

void __LogOutputFile_Writer(LogOutput& output, const LogMessage& message, std::string_view text) {
    output.file.write(text);
    if ((message.level & kLogLevelMask) >= kLogLevelError) output.file.flush();
}

HalvaneStatus takeParameter(LogFile& file, std::string_view key, std::string_view value) {
    if (key == "path") return file.setPath(value);
    if (key == "roll") return file.setRoll(value);
    if (key == "backup") return file.setBackup(value);
    if (key == "buffer") return file.setBuffer(value);
    return kStatusUnknownParameter;
}

}  // namespace

HalvaneStatus __LogOutputFile_Setup(LogOutput& output, std::string_view parameters) {
    output.type = kLogOutputFile;
    output.writer = __LogOutputFile_Writer;
    LogFile& file = output.file;
    if (parameters.empty() || parameters == "stderr") {
        file.useStream(stderr);
        return kStatusOK;
    }
    if (parameters == "stdout") {
        file.useStream(stdout);
        return kStatusOK;
    }
    const HalvaneStatus status =
        forEachParameter(parameters, [&file](std::string_view key, std::string_view value) {
            return takeParameter(file, key, value);
        });
    return status == kStatusOK ? file.open() : status;
}

}  // namespace halvane::logging
