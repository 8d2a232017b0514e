#include "tools/halvane/command.h"

#include <cstdio>
#include <exception>
#include <new>

#include "tools/halvane/message.h"

namespace halvane::tool {

int exitStatusOf(Command command) noexcept {
    try {
        return command();
    } catch (const std::bad_alloc&) {
        std::fputs("halvane: out of memory\n", stderr);
    } catch (const std::exception& failure) {
        complain(failure.what());
    }
    return kExitFailed;
}

}  // namespace halvane::tool
