#include <string>

#include "halvane/utils/cli.h"
#include "halvane/utils/log.h"

#include "tools/halvane/commands/command.h"
#include "tools/halvane/commands/command_table.h"
#include "tools/halvane/options/single_option.h"
#include "tools/halvane/output/message.h"
#include "tools/halvane/output/standard_files.h"
#include "tools/halvane/output/standard_output.h"

namespace halvane::tool {
namespace {

// The log file belongs to the daemon, so the library logs to standard error here.
void keepFromLogFile() {
#define HALVANE_KEEP_FROM_LOG_FILE(name) gLogCategory_##name.initConfig = nullptr;
    HALVANE_WIFI_LOG_CATEGORIES(HALVANE_KEEP_FROM_LOG_FILE)
#undef HALVANE_KEEP_FROM_LOG_FILE
}

// It is also a failure if results do not reach standard output (because of a full disk, for
// example). A reader that has seen enough, such as head, is told nothing: the status is that of a
// program which SIGPIPE ended.
int flushed(int status) {
    if (flushOutput()) return status;
    if (isReaderGone()) return kExitReaderGone;
    complain(std::string("standard output: ") + lostOutputReason());
    return status == kExitDone ? kExitFailed : status;
}

int run() {
    keepFromLogFile();
    auto commands = commandTable();
    refuseRepeatedOptions(commands);
    const int status =
        flushed(exitStatusOfParser(CLIParse(commands.data(), kCLISuggest | kCLIFullHelp)));
    CLIFree();
    return status;
}

}  // namespace
}  // namespace halvane::tool

int main(int argc, char** argv) {
    halvane::tool::openStandardFiles();
    CLIInit(argc, argv);
    return halvane::tool::exitStatusOf(halvane::tool::run);
}
