// The output "console": standard error, or the system log if the program has discarded standard
// error.
#include <sys/stat.h>
#include <unistd.h>

#include "halvane/base/status.h"
#include "halvane/utils/log/output_internal.h"

namespace halvane::logging {

namespace {

bool isStandardErrorDiscarded() {
    struct stat error {};
    struct stat null {};
    return ::fstat(STDERR_FILENO, &error) == 0 && ::stat("/dev/null", &null) == 0 &&
           error.st_dev == null.st_dev && error.st_ino == null.st_ino;
}

}  // namespace

HalvaneStatus __LogOutputConsole_Setup(LogOutput& output, std::string_view parameters) {
    return isStandardErrorDiscarded() ? __LogOutputSyslog_Setup(output, parameters)
                                      : __LogOutputFile_Setup(output, parameters);
}

}  // namespace halvane::logging
