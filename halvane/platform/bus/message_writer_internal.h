// Writes the dictionary of a message into a D-Bus message.
#ifndef HALVANE_PLATFORM_BUS_MESSAGE_WRITER_INTERNAL_H
#define HALVANE_PLATFORM_BUS_MESSAGE_WRITER_INTERNAL_H

#include <systemd/sd-bus.h>

#include "halvane/platform/bus/ipc_message.h"

namespace halvane {

// Appends `source` as one a{sv}. Returns a negative errno value on failure; the caller must then
// discard `target`.
// REQUIRES: checkBusMessage() does not refuse `source`.
int writeBusMessage(sd_bus_message* target, const IPCMessage& source);

}  // namespace halvane

#endif
