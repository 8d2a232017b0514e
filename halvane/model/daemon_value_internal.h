// Reads values of the daemon's messages, at both ends.
#ifndef HALVANE_MODEL_DAEMON_VALUE_INTERNAL_H
#define HALVANE_MODEL_DAEMON_VALUE_INTERNAL_H

#include <string_view>

#include "halvane/platform/bus/ipc_message.h"

namespace halvane {

// Returns the value of `key`; null if it is missing or of another type. Valid until the message is
// next changed.
template <typename Kind>
const Kind* daemonValue(const IPCMessage& message, std::string_view key) {
    const auto* const value = message.entries().find(key);
    return value != nullptr ? value->as<Kind>() : nullptr;
}

}  // namespace halvane

#endif
