// Connects to a message bus.
#ifndef HALVANE_PLATFORM_BUS_OPEN_BUS_INTERNAL_H
#define HALVANE_PLATFORM_BUS_OPEN_BUS_INTERNAL_H

#include <cstdint>
#include <string>
#include <systemd/sd-bus.h>

#include "halvane/platform/bus/libsystemd_internal.h"
#include "halvane/platform/bus/pointers_internal.h"

namespace halvane {

// Time limits of the calls on a connection, in microseconds, as sd-bus has them.
inline constexpr std::uint64_t kUsualCallLimit = 0;
inline constexpr std::uint64_t kNoCallLimit = UINT64_MAX;

// Begins to connect to the bus at a D-Bus address, or returns a negative errno value if that fails
// at once. The connection equals one of sd_bus_open_system() or sd_bus_open_user(), except that the
// limit covers the greeting of the bus too, and that it accepts no descriptors: a message with more
// of them than the process has room for would end it.
inline int openBus(const std::string& address, std::uint64_t callLimit, BusPointer& bus) {
    sd_bus* opened = nullptr;
    int result = libsystemd().sd_bus_new(&opened);
    bus.reset(opened);
    if (result >= 0) result = libsystemd().sd_bus_set_address(opened, address.c_str());
    if (result >= 0) result = libsystemd().sd_bus_set_bus_client(opened, 1);
    if (result >= 0) result = libsystemd().sd_bus_negotiate_fds(opened, 0);
    if (result >= 0) result = libsystemd().sd_bus_set_method_call_timeout(opened, callLimit);
    if (result >= 0) result = libsystemd().sd_bus_start(opened);
    return result;
}

}  // namespace halvane

#endif
