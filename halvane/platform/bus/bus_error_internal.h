// Calls of sd-bus and sd-event that fail.
#ifndef HALVANE_PLATFORM_BUS_BUS_ERROR_INTERNAL_H
#define HALVANE_PLATFORM_BUS_BUS_ERROR_INTERNAL_H

#include <cerrno>
#include <cstring>
#include <new>
#include <string>

#include "halvane/base/result.h"
#include "halvane/platform/bus/libsystemd_internal.h"

namespace halvane {

// The problem of a call that returned a negative errno: "joining the bus: Connection refused".
// Throws std::bad_alloc if memory is short.
inline std::string busProblem(int result, const char* attempt) {
    if (result == -ENOMEM) throw std::bad_alloc();
    if (result == -ELIBACC && libsystemd().problem) {
        return std::string(attempt) + ": " + libsystemd().problem;
    }
    return std::string(attempt) + ": " + std::strerror(-result);
}

// The result of a call that the world outside may let fail.
inline Result<void, std::string> busAttempt(int result, const char* attempt) {
    if (result < 0) return Unexpected(busProblem(result, attempt));
    return {};
}

}  // namespace halvane

#endif
