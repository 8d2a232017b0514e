// What a message is on D-Bus, and whether it can be sent. A bus ends the connection of who sends a
// message that breaks the rules of D-Bus, so that nothing of the kind may reach it.
#ifndef HALVANE_PLATFORM_BUS_MESSAGE_CHECK_INTERNAL_H
#define HALVANE_PLATFORM_BUS_MESSAGE_CHECK_INTERNAL_H

#include <cstddef>
#include <string_view>

#include "halvane/base/property_list_value.h"
#include "halvane/platform/bus/ipc_message.h"

namespace halvane {

// The type of a value, as it stands in a signature; null for a value that has none.
const char* busSignatureOf(const PropertyListValue& value);

struct BusMessageCheck {
    std::string_view refusal;  // why the message cannot be sent; empty where it can. Static text
    std::size_t size = 0;      // of the whole a{sv}, in bytes, where it can
};

BusMessageCheck checkBusMessage(const IPCMessage& message, std::size_t sizeLimit);

}  // namespace halvane

#endif
