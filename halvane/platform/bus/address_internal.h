// Where the message buses of the machine are.
#ifndef HALVANE_PLATFORM_BUS_ADDRESS_INTERNAL_H
#define HALVANE_PLATFORM_BUS_ADDRESS_INTERNAL_H

#include <optional>
#include <string>

namespace halvane {

// The system's bus: DBUS_SYSTEM_BUS_ADDRESS, or else the well-known socket.
std::string systemBusAddress();

// The bus of the user's session: DBUS_SESSION_BUS_ADDRESS, or else the socket in XDG_RUNTIME_DIR.
// Absent where neither is set.
std::optional<std::string> sessionBusAddress();

// Both read the environment, except in a program that has more rights than who runs it: there the
// environment is taken for unset.

}  // namespace halvane

#endif
