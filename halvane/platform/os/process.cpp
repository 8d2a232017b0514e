#include <cerrno>

#include "halvane/platform/os/process_internal.h"

namespace halvane {

std::string programName() {
    return program_invocation_short_name;
}

}  // namespace halvane
