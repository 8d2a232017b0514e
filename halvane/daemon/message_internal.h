// Reads the daemon's messages. A value of another type than the requested one reads as missing.
#ifndef HALVANE_DAEMON_MESSAGE_INTERNAL_H
#define HALVANE_DAEMON_MESSAGE_INTERNAL_H

#include <cstdint>

#include "halvane/base/number.h"
#include "halvane/model/daemon_protocol.h"
#include "halvane/model/daemon_value_internal.h"
#include "halvane/platform/bus/ipc_message.h"

namespace halvane {

// Returns "status", the lowest 32 bits of a 64-bit integer; 0, success, if it is missing.
inline std::int32_t daemonStatus(const IPCMessage& message) {
    const auto* number = daemonValue<Number>(message, protocol::key::kStatus);
    if (number == nullptr || number->isReal()) return 0;
    return static_cast<std::int32_t>(number->exactInt64().value_or(0));
}

}  // namespace halvane

#endif
