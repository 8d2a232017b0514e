// The version of the program.
#include <cstdint>
#include <cstdio>

#include "halvane/base/status.h"
#include "halvane/utils/cli.h"
#include "halvane/utils/cli/message_internal.h"

namespace {

void printVersion(const CLIOption& option) {
    halvane::cli::Message(stdout).add(
        "%s version %s (%s)\n", gProgramLongName != nullptr ? gProgramLongName : gProgramName,
        static_cast<const char*>(option.valuePtr), static_cast<const char*>(option.countPtr));
}

}  // namespace

extern "C" std::int32_t _CLIVersionOption(CLIOption* option, const char*, int negated) {
    if (negated != 0) return kStatusOK;
    printVersion(*option);
    return kStatusDone;
}

extern "C" void _CLIVersionCommand() {
    if (gCLICurrentOption != nullptr) printVersion(*gCLICurrentOption);
}
