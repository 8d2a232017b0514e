#include "tools/halvane/input/packet_source.h"

namespace halvane::tool {

std::string endsInFrame(std::uint64_t framesRead) {
    const std::string read = framesRead == 0   ? "no frame was read"
                             : framesRead == 1 ? "1 frame was read"
                                               : std::to_string(framesRead) + " frames were read";
    return "ends in the middle of frame " + std::to_string(framesRead + 1) + "; " + read;
}

}  // namespace halvane::tool
