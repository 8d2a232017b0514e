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
#include "tools/halvaned-sim/options.h"
#include "tools/halvaned-sim/session.h"
#include "tools/halvaned-sim/state_text.h"
#include "tools/halvaned-sim/world.h"
#include "tools/halvaned-sim/world_file.h"

namespace halvane::sim {
namespace {

constexpr int kExitUsage = 2;

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
    const auto world = worldOf(gSimOptions.state);
    if (!world) return refuse(world.error(), EXIT_FAILURE);
    const auto text = xmlPropertyList(propertyListOf(*world));
    return text && print(*text) ? EXIT_SUCCESS : EXIT_FAILURE;
}

int run() {
    const SessionOptions session{gSimOptions.isPrivate != 0, gSimOptions.lines.strings(),
                                 takeCommand()};
    const bool wouldRun = session.isPrivate || !session.lines.empty() || !session.command.empty();
    if (gSimOptions.linesToSend.count > 0) {
        if (wouldRun || gSimOptions.state != nullptr || gSimOptions.printsState != 0) {
            return refuse("--send takes no other option and no command");
        }
        return sendLines(gSimOptions.linesToSend.strings());
    }
    if (gSimOptions.printsState != 0) {
        return wouldRun ? refuse("--print-state takes only --state") : printState();
    }
    auto world = worldOf(gSimOptions.state);
    if (!world) return refuse(world.error(), EXIT_FAILURE);
    return simulate(*std::move(world), session);
}

int exitStatus() noexcept {
    try {
        const std::int32_t status = CLIParse(simOptions(), kCLIOptionsOnly);
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
    StringArray_Free(gSimOptions.lines.items, gSimOptions.lines.count);
    StringArray_Free(gSimOptions.linesToSend.items, gSimOptions.linesToSend.count);
    CLIFree();
    return status;
}
