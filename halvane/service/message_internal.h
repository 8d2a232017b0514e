// Makes the messages of a daemon: replies and notifications.
#ifndef HALVANE_SERVICE_MESSAGE_INTERNAL_H
#define HALVANE_SERVICE_MESSAGE_INTERNAL_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/property_list_value.h"
#include "halvane/base/skeleton_internal.h"
#include "halvane/model/daemon_list_key_internal.h"
#include "halvane/model/daemon_status.h"
#include "halvane/model/station_change.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/bus/service_connection.h"

namespace halvane {

// The largest reply: the limit of the bus, without what the bus adds.
inline constexpr std::size_t kLargestDaemonReply = kServiceMessageLimit - 2048;

// A reply that holds nothing but a status.
IPCMessage statusMessage(std::int64_t status);
IPCMessage statusMessage(DaemonStatus status);

// A success with a list, or the status Unwritable.
IPCMessage listMessage(const char* key, PropertyListArray list);

template <typename Records>
IPCMessage listMessage(const Records& records) {
    return listMessage(kDaemonListKey<typename Records::value_type>,
                       skeleton::skeletonsOf(records));
}

// The reply that holds the logging settings.
IPCMessage loggingMessage(std::string settings);

// A notification. The address has 6 bytes, except in forged ones.
IPCMessage stationMessage(StationChange::Kind kind, std::string_view interface,
                          const ByteBuffer& address);

// Returns the reply, or a status instead if the bus would not take it.
IPCMessage sendable(IPCMessage reply);

}  // namespace halvane

#endif
