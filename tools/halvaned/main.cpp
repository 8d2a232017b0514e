#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>

#include "halvane/base/status.h"
#include "halvane/utils/cli.h"

#include "tools/halvane/output/standard_files.h"
#include "tools/halvaned/hosting/daemon.h"
#include "tools/halvaned/options.h"

namespace halvane::hosting {
namespace {

constexpr int kExitUsage = 2;

int exitStatus() noexcept {
    try {
        const std::int32_t status = CLIParse(daemonOptions(), kCLIOptionsOnly | kCLISuggest);
        if (status == kCLIUsageError) return kExitUsage;
        if (status != kStatusOK) return EXIT_FAILURE;
        const bool hasPrinted = gCLICurrentOption != nullptr;  // help or version
        if (hasPrinted) return std::fflush(stdout) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
        if (gArgI < gArgC) {
            std::fprintf(stderr, "halvaned: '%s' is no option\n", gArgV[gArgI]);
            return kExitUsage;
        }
        const DaemonOptions options = takeDaemonOptions();
        if (options.settingsFile && options.settingsFile->empty()) {
            std::fputs("halvaned: --config needs the name of a file\n", stderr);
            return kExitUsage;
        }
        return runDaemon(options);
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
