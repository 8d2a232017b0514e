// The origin of a record that is not folded.
#ifndef TOOLS_HALVANE_OUTPUT_FRAME_ORIGIN_H
#define TOOLS_HALVANE_OUTPUT_FRAME_ORIGIN_H

#include <cstdint>
#include <optional>

#include "halvane/capture/beacon_frame.h"

namespace halvane::tool {

struct FrameOrigin {
    std::uint64_t number = 0;  // in the file, counted from 1
    capture::BeaconSubtype subtype = capture::BeaconSubtype::Beacon;
    std::optional<std::int64_t> time{};  // nanoseconds since 1970-01-01 00:00 UTC
};

// "beacon" or "probe-response".
constexpr const char* subtypeName(capture::BeaconSubtype subtype) {
    switch (subtype) {
        case capture::BeaconSubtype::Beacon:
            return "beacon";
        case capture::BeaconSubtype::ProbeResponse:
            return "probe-response";
    }
    return "";
}

}  // namespace halvane::tool

#endif
