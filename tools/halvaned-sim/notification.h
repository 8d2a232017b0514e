// Events of stations, and the messages that notify subscribers.
#ifndef TOOLS_HALVANED_SIM_NOTIFICATION_H
#define TOOLS_HALVANED_SIM_NOTIFICATION_H

#include <optional>
#include <string>
#include <string_view>

#include "halvane/base/byte_buffer.h"
#include "halvane/model/station_change.h"
#include "halvane/platform/bus/ipc_message.h"

namespace halvane::sim {

using Happening = StationChange::Kind;

// Converts "authorized", "joined", "kicked" and "left". Absent for any other word.
std::optional<Happening> happeningFor(std::string_view word);

struct Notification {
    Happening happening;
    std::string interface;
    ByteBuffer mac;

    // REQUIRES: the address has 6 bytes.
    StationChange change() const;
    IPCMessage message() const;

    friend bool operator==(const Notification&, const Notification&) = default;
};

}  // namespace halvane::sim

#endif
