// Calls of sd-bus and sd-event that are not expected to fail.
#ifndef TOOLS_HALVANED_SIM_BUS_ERROR_H
#define TOOLS_HALVANED_SIM_BUS_ERROR_H

#include <stdexcept>

#include "halvane/platform/bus/bus_error_internal.h"

namespace halvane::sim {

class BusError : public std::runtime_error {
    using runtime_error::runtime_error;
};

// Throws BusError if the call has failed.
inline int check(int result, const char* attempt) {
    if (result < 0) throw BusError(busProblem(result, attempt));
    return result;
}

}  // namespace halvane::sim

#endif
