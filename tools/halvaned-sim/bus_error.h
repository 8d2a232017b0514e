// Calls of sd-bus and sd-event that fail.
#ifndef TOOLS_HALVANED_SIM_BUS_ERROR_H
#define TOOLS_HALVANED_SIM_BUS_ERROR_H

#include <cerrno>
#include <cstring>
#include <new>
#include <stdexcept>
#include <string>

#include "halvane/base/result.h"

namespace halvane::sim {

// The problem of a call that returned a negative errno: "joining the bus: Connection refused".
// Throws std::bad_alloc if memory is short.
inline std::string problemOf(int result, const char* attempt) {
    if (result == -ENOMEM) throw std::bad_alloc();
    return std::string(attempt) + ": " + std::strerror(-result);
}

// The result of a call that the world outside may let fail.
inline Result<void, std::string> attempted(int result, const char* attempt) {
    if (result < 0) return Unexpected(problemOf(result, attempt));
    return {};
}

class BusError : public std::runtime_error {
    using runtime_error::runtime_error;
};

// For a call that is not expected to fail: throws BusError if it does.
inline int check(int result, const char* attempt) {
    if (result < 0) throw BusError(problemOf(result, attempt));
    return result;
}

}  // namespace halvane::sim

#endif
