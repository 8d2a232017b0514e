#include "tools/halvane/commands/command.h"

#include <cstdio>
#include <exception>
#include <new>

#include "halvane/base/status.h"

#include "tools/halvane/output/message.h"

namespace halvane::tool {

namespace {

// Allocates no memory itself.
int failWithoutMemory() {
    std::fputs("halvane: out of memory\n", stderr);
    return kExitFailed;
}

}  // namespace

int refuse(const char* command, const std::string& message) {
    complain(std::string(command) + ": " + message);
    return kExitUsage;
}

int refuse(const char* command, const UsageError& error) {
    complain(std::string(command) + ": " + error.message, error.hint);
    return kExitUsage;
}

int exitStatusOf(Command command) noexcept {
    try {
        return command();
    } catch (const std::bad_alloc&) {
        return failWithoutMemory();
    } catch (const std::exception& failure) {
        complain(failure.what());
    }
    return kExitFailed;
}

int exitStatusOfParser(std::int32_t status) noexcept {
    if (status == kCLINoMemory) return failWithoutMemory();
    if (status == kStatusOK) status = gExitCode;
    if (status == kCLIUsageError) return kExitUsage;
    return status >= kExitDone && status <= kExitUsage ? status : kExitFailed;
}

}  // namespace halvane::tool
