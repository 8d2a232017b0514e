// Reads the daemon's messages. A value of another type than the requested one reads as missing.
#ifndef HALVANE_DAEMON_MESSAGE_INTERNAL_H
#define HALVANE_DAEMON_MESSAGE_INTERNAL_H

#include <cstdint>
#include <string_view>

#include "halvane/base/number.h"
#include "halvane/model/daemon_protocol.h"
#include "halvane/platform/bus/ipc_message.h"

namespace halvane {

// Returns the value of `key`, or null. Valid until the message is next changed.
template <typename Kind>
const Kind* daemonValue(const IPCMessage& message, std::string_view key) {
    const auto* value = message.entries().find(key);
    return value != nullptr ? value->as<Kind>() : nullptr;
}

// Returns "status", the lowest 32 bits of a 64-bit integer; 0, success, if it is missing.
inline std::int32_t daemonStatus(const IPCMessage& message) {
    const auto* number = daemonValue<Number>(message, protocol::key::kStatus);
    if (number == nullptr || number->isReal()) return 0;
    return static_cast<std::int32_t>(number->exactInt64().value_or(0));
}

}  // namespace halvane

#endif
