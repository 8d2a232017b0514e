// The form of a message on D-Bus, and whether it can be sent. A bus disconnects the sender of a
// message that breaks the rules of D-Bus, so no such message may reach it.
#ifndef HALVANE_PLATFORM_BUS_MESSAGE_CHECK_INTERNAL_H
#define HALVANE_PLATFORM_BUS_MESSAGE_CHECK_INTERNAL_H

#include <cstddef>
#include <string_view>

#include "halvane/base/property_list_value.h"
#include "halvane/platform/bus/ipc_message.h"

namespace halvane {

// The type code of a value, as used in a signature; null for a value that has none.
const char* busSignatureOf(const PropertyListValue& value);

struct BusMessageCheck {
    std::string_view refusal;  // why the message cannot be sent, static text; empty if it can
    std::size_t size = 0;      // of the whole a{sv}, in bytes, if it can be sent
};

BusMessageCheck checkBusMessage(const IPCMessage& message, std::size_t sizeLimit);

}  // namespace halvane

#endif
