// Notifications of stations as lines of output.
#ifndef TOOLS_HALVANE_OUTPUT_STATION_EVENT_H
#define TOOLS_HALVANE_OUTPUT_STATION_EVENT_H

#include <functional>
#include <memory>
#include <string>

#include "halvane/base/byte_buffer.h"
#include "halvane/daemon/xpc_client_delegate.h"

#include "tools/halvane/output/format.h"

namespace halvane::tool {

struct StationEvent {
    const char* event;  // "authorized", "joined", "kicked" or "left"
    ByteBuffer mac;
    std::string interfaceName;
};

// A delegate that hands every notification to `take`, on the client's connection queue.
// REQUIRES: `take` throws nothing.
std::shared_ptr<const HalvaneXPCClientDelegate> delegateFor(
    const std::function<void(const StationEvent&)>& take);

// Without its newline: as text, which is safe to show, or as JSON.
std::string lineOf(const StationEvent& event, Format format);

}  // namespace halvane::tool

#endif
