#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iterator>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/result.h"
#include "halvane/base/status.h"
#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/utils/cli.h"
#include "halvane/utils/log.h"

#include "tools/halvane/output/standard_files.h"
#include "tools/halvaned-sim/control.h"
#include "tools/halvaned-sim/default_world.h"
#include "tools/halvaned-sim/message.h"
#include "tools/halvaned-sim/session.h"
#include "tools/halvaned-sim/state_text.h"
#include "tools/halvaned-sim/world.h"
#include "tools/halvaned-sim/world_file.h"

namespace halvane::sim {
namespace {

constexpr int kExitUsage = 2;

struct Texts {
    char** items = nullptr;
    std::size_t count = 0;

    std::vector<std::string> strings() const { return {items, items + count}; }
};

std::int32_t gIsPrivate;
std::int32_t gPrintsState;
const char* gState;
Texts gLines;
Texts gLinesToSend;

std::int32_t help(CLIOption* option, const char* value, int negated) {
    const std::int32_t status = _CLIHelpOption(option, value, negated);
    std::fprintf(
        stderr,
        "Simulates the Wi-Fi daemon, so that its clients can be tried and tested. It uses\n"
        "no radio. It runs until SIGTERM, SIGINT, SIGHUP or SIGQUIT arrives, or until its\n"
        "command ends:\n\n"
        "    halvaned-sim [options]\n"
        "    halvaned-sim [options] [--] COMMAND [ARGUMENTS]\n\n"
        "It joins the system bus, which DBUS_SYSTEM_BUS_ADDRESS may name, or starts a bus\n"
        "of its own. The exit status is that of the command: 128+N if signal N ended it,\n"
        "127 if it does not exist, 126 if it cannot be run. Without a command it is 0,\n"
        "1 after a failure, or 2 after wrong usage.\n\n"
        "Control lines:\n\n%s\n",
        controlHelp().c_str());
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
    {.type = kCLIBoolean,
     .longName = "private",
     .valuePtr = &gIsPrivate,
     .shortHelp = "start a private bus, and print its address"},
    {.type = kCLIString,
     .longName = "state",
     .valuePtr = &gState,
     .argName = "FILE",
     .shortHelp = "simulate the world in FILE; \"-\" is standard input"},
    {.type = kCLIBoolean,
     .longName = "print-state",
     .valuePtr = &gPrintsState,
     .shortHelp = "print the simulated world for --state, and exit"},
    {.type = kCLIStringArray,
     .longName = "control",
     .valuePtr = &gLines.items,
     .countPtr = &gLines.count,
     .argName = "LINE",
     .shortHelp = "carry out a control line at the start; may be repeated"},
    {.type = kCLIStringArray,
     .longName = "send",
     .valuePtr = &gLinesToSend.items,
     .countPtr = &gLinesToSend.count,
     .argName = "LINE",
     .shortHelp = "send the line to a running simulation; may be repeated"},
    {.type = kCLIEnd},
};

// The library logs to no file here, because the log file belongs to the daemon.
void keepFromLogFile() {
#define HALVANE_KEEP_FROM_LOG_FILE(name) gLogCategory_##name.initConfig = nullptr;
    HALVANE_WIFI_LOG_CATEGORIES(HALVANE_KEEP_FROM_LOG_FILE)
#undef HALVANE_KEEP_FROM_LOG_FILE
}

int refuse(const std::string& message, int status = kExitUsage) {
    complain(message);
    return status;
}

Result<World, std::string> worldOf(const char* path) {
    if (path == nullptr) return defaultWorld();
    auto text = stateText(path);
    if (!text) return Unexpected(std::move(text).error());
    auto world = worldFromText(*text);
    if (!world) return Unexpected(stateName(path) + ": " + world.error());
    return world;
}

std::vector<std::string> takeCommand() {
    std::vector<std::string> words;
    while (gArgI < gArgC) words.emplace_back(gArgV[gArgI++]);
    return words;
}

int printState() {
    const auto world = worldOf(gState);
    if (!world) return refuse(world.error(), EXIT_FAILURE);
    const auto text = xmlPropertyList(propertyListOf(*world));
    return text && print(*text) ? EXIT_SUCCESS : EXIT_FAILURE;
}

int run() {
    const SessionOptions session{gIsPrivate != 0, gLines.strings(), takeCommand()};
    const bool wouldRun = session.isPrivate || !session.lines.empty() || !session.command.empty();
    if (gLinesToSend.count > 0) {
        if (wouldRun || gState != nullptr || gPrintsState != 0) {
            return refuse("--send takes no other option and no command");
        }
        return sendLines(gLinesToSend.strings());
    }
    if (gPrintsState != 0) {
        return wouldRun ? refuse("--print-state takes only --state") : printState();
    }
    auto world = worldOf(gState);
    if (!world) return refuse(world.error(), EXIT_FAILURE);
    return simulate(*std::move(world), session);
}

int exitStatus() noexcept {
    try {
        const std::int32_t status = CLIParse(gOptions, kCLIOptionsOnly);
        if (status == kCLIUsageError) return kExitUsage;
        if (status != kStatusOK) return EXIT_FAILURE;
        const bool hasPrinted = gCLICurrentOption != nullptr;  // help or version
        if (!hasPrinted) return run();
        return std::fflush(stdout) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::bad_alloc&) {
        std::fputs("halvaned-sim: out of memory\n", stderr);
    } catch (const std::exception& error) {
        complain(error.what());
    }
    return EXIT_FAILURE;
}

}  // namespace
}  // namespace halvane::sim

int main(int argc, char** argv) {
    using namespace halvane::sim;
    halvane::tool::openStandardFiles();
    CLIInit(argc, argv);
    keepFromLogFile();
    const int status = exitStatus();
    StringArray_Free(gLines.items, gLines.count);
    StringArray_Free(gLinesToSend.items, gLinesToSend.count);
    CLIFree();
    return status;
}
