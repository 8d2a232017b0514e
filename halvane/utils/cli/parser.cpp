// The state of a command line, and its start and end.
#include <cstdarg>
#include <cstdlib>
#include <cstring>

#include "halvane/utils/cli/message_internal.h"
#include "halvane/utils/cli/parser_internal.h"

int gArgI = 0;
int gArgC = 0;
char** gArgV = nullptr;
int gExitCode = 0;
const char* gProgramName = "?";
const char* gProgramPath = "?";
const char* gProgramLongName = nullptr;
CLIOption* gCLICurrentOption = nullptr;

namespace halvane::cli {

State gState;

void freeVectors(const char* const* last) {
    while (gState.newestVector != last) {
        char** const before = reinterpret_cast<char**>(gState.newestVector[0]);
        std::free(gState.newestVector);
        gState.newestVector = before;
    }
}

namespace {

void forget() {
    freeVectors();
    gState = State();
    gCLICurrentOption = nullptr;
}

// The program's own argument may be null. After it, a null argument ends them.
int countArguments(int argc, char** argv) {
    if (argv == nullptr || argc <= 0) return 0;
    int count = 1;
    while (count < argc && argv[count] != nullptr) ++count;
    return count;
}

const char* lastPart(const char* path) {
    const char* const slash = std::strrchr(path, '/');
    return slash != nullptr ? slash + 1 : path;
}

}  // namespace

}  // namespace halvane::cli

extern "C" const char* CLIInit(int argc, char** argv) {
    halvane::cli::forget();
    gArgC = halvane::cli::countArguments(argc, argv);
    gArgV = argv;
    gArgI = gArgC > 0 ? 1 : 0;
    gExitCode = 0;
    gProgramPath = gArgC > 0 && argv[0] != nullptr ? argv[0] : "?";
    gProgramName = halvane::cli::lastPart(gProgramPath);
    return gProgramName;
}

extern "C" void CLIFree() {
    halvane::cli::forget();
    gArgC = 0;
    gArgI = 0;
    gArgV = nullptr;
}

extern "C" void ErrQuit(int status, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    halvane::cli::Message().addList(format, arguments);
    va_end(arguments);
    std::exit(status);
}
