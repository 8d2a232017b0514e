// The addresses of the machine's message buses.
#ifndef HALVANE_PLATFORM_BUS_ADDRESS_INTERNAL_H
#define HALVANE_PLATFORM_BUS_ADDRESS_INTERNAL_H

#include <optional>
#include <string>
#include <string_view>

namespace halvane {

// The system bus: DBUS_SYSTEM_BUS_ADDRESS, otherwise the well-known socket.
std::string systemBusAddress();

// The user's session bus: DBUS_SESSION_BUS_ADDRESS, otherwise the socket in XDG_RUNTIME_DIR. Absent
// if neither variable is set.
std::optional<std::string> sessionBusAddress();

// Both read the environment, except in a program with more rights than its user: there
// they treat the variables as unset.

// Escapes a value for an address: bytes other than letters, digits and "-_/." become "%2c" and the
// like (D-Bus Specification, "Server Addresses").
std::string escapedBusAddressValue(std::string_view value);

}  // namespace halvane

#endif
