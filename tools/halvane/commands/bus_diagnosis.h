// Finds out why there is no daemon to talk to, for the messages about it.
//
// Any thread may call the functions, as long as nobody changes the environment.
#ifndef TOOLS_HALVANE_COMMANDS_BUS_DIAGNOSIS_H
#define TOOLS_HALVANE_COMMANDS_BUS_DIAGNOSIS_H

#include <string>
#include <string_view>

namespace halvane::tool {

// The address of the system bus as the library reads it.
std::string systemBusAddressOf();

// Returns why the bus at this address cannot be reached: "/run/dbus/system_bus_socket: No such file
// or directory". It tries to connect to the first socket of the address. If that succeeds, or if it
// is of another kind, the text is the place alone.
std::string unreachableReason(std::string_view address);

// Whether a program `name` is in one of the folders, which colons separate.
bool isInstalled(const std::string& name, std::string_view folders);

// Whether this machine has the program of a Wi-Fi daemon: in PATH, or where daemons are.
bool isDaemonInstalled();

}  // namespace halvane::tool

#endif
