#include "halvane/capture/fcs.h"

#include <algorithm>

#include "halvane/base/byte_cursor.h"

namespace halvane::capture {

std::span<const std::uint8_t> withoutFCS(std::span<const std::uint8_t> frame, std::size_t missing) {
    const std::size_t kept = kFCSSize - std::min(missing, kFCSSize);
    return ByteCursor(frame).take(frame.size() - std::min(kept, frame.size())).value_or(frame);
}

}  // namespace halvane::capture
