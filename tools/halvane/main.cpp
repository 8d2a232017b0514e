#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <new>
#include <string>
#include <string_view>

#include "halvane/utils/log.h"

#include "tools/halvane/command.h"
#include "tools/halvane/message.h"

namespace halvane::tool {
namespace {

struct Command {
    const char* name;
    const char* summary;
    CommandMain main;
};

constexpr Command kCommands[] = {
    {"decode", "print the BSS records of capture files", decodeCommand},
};

void printHelp() {
    std::printf(
        "Usage: halvane <command> [options]\n\n"
        "Looks into Wi-Fi: element decoding, BSS records.\n\nCommands:\n");
    for (const Command& command : kCommands) {
        std::printf("  %-10s %s\n", command.name, command.summary);
    }
    std::printf(
        "\nOptions:\n"
        "  --help     print this help\n"
        "  --version  print the version\n\n"
        "'halvane <command> --help' tells a command's options. Results go to standard output,\n"
        "messages to standard error. Exit status: 0 done, 1 failed, 2 usage.\n");
}

// The log file is the daemon's; what the library has to say here goes to standard error.
void keepFromLogFile() {
#define HALVANE_KEEP_FROM_LOG_FILE(name) gLogCategory_##name.initConfig = nullptr;
    HALVANE_WIFI_LOG_CATEGORIES(HALVANE_KEEP_FROM_LOG_FILE)
#undef HALVANE_KEEP_FROM_LOG_FILE
}

int run(int argc, char** argv) {
    keepFromLogFile();
    const std::string_view name = argc > 1 ? argv[1] : "";
    if (name == "--help" || name == "-h" || name == "help") {
        printHelp();
        return kExitDone;
    }
    if (name == "--version") {
        std::printf("halvane %s\n", HALVANE_VERSION);
        return kExitDone;
    }
    for (const Command& command : kCommands) {
        if (name == command.name) return command.main(argc - 1, argv + 1);
    }
    if (name.empty()) {
        complain("no command; 'halvane --help' lists them");
    } else {
        complain("unknown command '" + std::string(name) + "'; 'halvane --help' lists them");
    }
    return kExitUsage;
}

// Results that did not reach standard output (a full disk, say) are a failure too.
int flushed(int status) {
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return status;
    complain(std::string("standard output: ") + std::strerror(errno));
    return status == kExitDone ? kExitFailed : status;
}

}  // namespace
}  // namespace halvane::tool

int main(int argc, char** argv) {
    try {
        return halvane::tool::flushed(halvane::tool::run(argc, argv));
    } catch (const std::bad_alloc&) {
        std::fputs("halvane: out of memory\n", stderr);
        return halvane::tool::kExitFailed;
    } catch (const std::exception& failure) {
        halvane::tool::complain(failure.what());
        return halvane::tool::kExitFailed;
    }
}
