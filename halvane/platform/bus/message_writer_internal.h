// Puts the dictionary of a message into a message of D-Bus.
#ifndef HALVANE_PLATFORM_BUS_MESSAGE_WRITER_INTERNAL_H
#define HALVANE_PLATFORM_BUS_MESSAGE_WRITER_INTERNAL_H

#include <systemd/sd-bus.h>

#include "halvane/platform/bus/ipc_message.h"

namespace halvane {

// Appends `source` as one a{sv}. Negative, an errno, on failure; `target` is to be thrown away
// then. REQUIRES: checkBusMessage() does not refuse it.
int writeBusMessage(sd_bus_message* target, const IPCMessage& source);

}  // namespace halvane

#endif
