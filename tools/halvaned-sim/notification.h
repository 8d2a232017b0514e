// Events of stations, and the messages that notify subscribers.
#ifndef TOOLS_HALVANED_SIM_NOTIFICATION_H
#define TOOLS_HALVANED_SIM_NOTIFICATION_H

#include <optional>
#include <string>
#include <string_view>

#include "halvane/base/byte_buffer.h"
#include "halvane/platform/bus/ipc_message.h"

namespace halvane::sim {

enum class Happening { Authorized, Joined, Kicked, Left };

// Converts to "authorized", "joined", "kicked", "left", and back. Absent for any other word.
std::string_view wordOf(Happening happening);
std::optional<Happening> happeningFor(std::string_view word);

struct Notification {
    Happening happening;
    std::string interface;
    ByteBuffer mac;

    IPCMessage message() const;

    friend bool operator==(const Notification&, const Notification&) = default;
};

}  // namespace halvane::sim

#endif
