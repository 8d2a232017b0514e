#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>

#include "halvane/base/status.h"
#include "halvane/utils/cli.h"

#include "tools/halvane/output/standard_files.h"
#include "tools/halvaned/hosting/daemon.h"

namespace halvane::hosting {
namespace {

constexpr int kExitUsage = 2;

const char* gSettingsFile;
std::int32_t gIsForeground;
std::int32_t gIsVerbose;

std::int32_t help(CLIOption* option, const char* value, int negated) {
    const std::int32_t status = _CLIHelpOption(option, value, negated);
    std::fputs(
        "Hosts Wi-Fi networks with hostapd, as its clients on the system bus ask for it\n"
        "(\"halvane start wlan0\"):\n\n"
        "    halvaned [options]\n\n"
        "SIGTERM and SIGINT end it and its networks, which the next start brings back.\n"
        "SIGHUP has it read its configuration file again. The exit status is 0 after\n"
        "these signals, 1 if it cannot run, or 2 after wrong usage.\n",
        stderr);
    return status;
}

CLIOption gOptions[] = {
    {.type = kCLICallback,
     .shortName = 'h',
     .longName = "help",
     .flags = kCLINoValue | kCLINoNegation,
     .callback = help,
     .shortHelp = "print this help"},
    {.type = kCLICallback,
     .longName = "version",
     .valuePtr = CLI_TEXT(HALVANE_VERSION),
     .countPtr = CLI_TEXT(HALVANE_BUILD),
     .flags = kCLINoValue | kCLINoNegation,
     .callback = _CLIVersionOption,
     .shortHelp = "print the version"},
    {.type = kCLIString,
     .longName = "config",
     .valuePtr = &gSettingsFile,
     .argName = "FILE",
     .shortHelp = "read FILE instead of /etc/halvane/halvaned.conf"},
    {.type = kCLIBoolean,
     .longName = "foreground",
     .valuePtr = &gIsForeground,
     .shortHelp = "stay in the foreground, and log to standard error"},
    {.type = kCLIBoolean,
     .longName = "verbose",
     .valuePtr = &gIsVerbose,
     .shortHelp = "log all that there is"},
    {.type = kCLIEnd},
};

int exitStatus() noexcept {
    try {
        const std::int32_t status = CLIParse(gOptions, kCLIOptionsOnly | kCLISuggest);
        if (status == kCLIUsageError) return kExitUsage;
        if (status != kStatusOK) return EXIT_FAILURE;
        const bool hasPrinted = gCLICurrentOption != nullptr;  // help or version
        if (hasPrinted) return std::fflush(stdout) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
        if (gArgI < gArgC) {
            std::fprintf(stderr, "halvaned: '%s' is no option\n", gArgV[gArgI]);
            return kExitUsage;
        }
        return runDaemon({.settingsFile = gSettingsFile != nullptr ? gSettingsFile : "",
                          .isForeground = gIsForeground != 0,
                          .isVerbose = gIsVerbose != 0});
    } catch (const std::bad_alloc&) {
        std::fputs("halvaned: out of memory\n", stderr);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "halvaned: %s\n", error.what());
    }
    return EXIT_FAILURE;
}

}  // namespace
}  // namespace halvane::hosting

int main(int argc, char** argv) {
    halvane::tool::openStandardFiles();
    CLIInit(argc, argv);
    const int status = halvane::hosting::exitStatus();
    CLIFree();
    return status;
}
