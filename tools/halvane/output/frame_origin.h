// The origin of a record that is not folded.
#ifndef TOOLS_HALVANE_OUTPUT_FRAME_ORIGIN_H
#define TOOLS_HALVANE_OUTPUT_FRAME_ORIGIN_H

#include <cstdint>

#include "halvane/capture/beacon_frame.h"

namespace halvane::tool {

struct FrameOrigin {
    std::uint64_t number = 0;  // in the file, counted from 1
    capture::BeaconSubtype subtype = capture::BeaconSubtype::Beacon;
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
