// Reads the dictionary of a message of D-Bus.
#ifndef HALVANE_PLATFORM_BUS_MESSAGE_READER_INTERNAL_H
#define HALVANE_PLATFORM_BUS_MESSAGE_READER_INTERNAL_H

#include <optional>
#include <systemd/sd-bus.h>

#include "halvane/platform/bus/ipc_message.h"

namespace halvane {

// The a{sv} that `source` begins with, its values read as service_connection.h says; data is copied
// once. Absent for a message that begins with something else, that is malformed, or that memory
// does not hold.
std::optional<IPCMessage> readBusMessage(sd_bus_message* source);

}  // namespace halvane

#endif
