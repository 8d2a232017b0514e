// Reads the dictionary of a D-Bus message.
#ifndef HALVANE_PLATFORM_BUS_MESSAGE_READER_INTERNAL_H
#define HALVANE_PLATFORM_BUS_MESSAGE_READER_INTERNAL_H

#include <optional>
#include <systemd/sd-bus.h>

#include "halvane/platform/bus/ipc_message.h"

namespace halvane {

// Returns the a{sv} at the beginning of `source`, with its values as service_connection.h
// describes. Data is copied once. Absent if the message begins with something else, is malformed,
// or does not fit into memory.
std::optional<IPCMessage> readBusMessage(sd_bus_message* source);

}  // namespace halvane

#endif
