// Calls of sd-bus and sd-event that fail.
#ifndef TOOLS_HALVANED_SIM_BUS_ERROR_H
#define TOOLS_HALVANED_SIM_BUS_ERROR_H

#include <cerrno>
#include <cstring>
#include <new>
#include <stdexcept>
#include <string>

namespace halvane::sim {

class BusError : public std::runtime_error {
    using runtime_error::runtime_error;
};

// Throws if the call returned a negative errno: "joining the bus: Connection refused".
inline int check(int result, const char* attempt) {
    if (result == -ENOMEM) throw std::bad_alloc();
    if (result < 0) throw BusError(std::string(attempt) + ": " + std::strerror(-result));
    return result;
}

}  // namespace halvane::sim

#endif
