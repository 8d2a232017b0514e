#include "halvane/capture/fcs.h"

#include <algorithm>

#include "halvane/base/byte_cursor.h"
#include "halvane/base/crc32.h"

namespace halvane::capture {

std::uint32_t frameCheckSequence(std::span<const std::uint8_t> frame) noexcept {
    return crc32(frame);
}

bool endsInItsFCS(std::span<const std::uint8_t> frame) noexcept {
    if (frame.size() < kFCSSize) return false;
    ByteCursor cursor(frame);
    const auto content = cursor.take(frame.size() - kFCSSize);
    return content && cursor.u32le() == frameCheckSequence(*content);
}

std::span<const std::uint8_t> withoutFCS(std::span<const std::uint8_t> frame,
                                         std::size_t missing) noexcept {
    const std::size_t kept = kFCSSize - std::min(missing, kFCSSize);
    return ByteCursor(frame).take(frame.size() - std::min(kept, frame.size())).value_or(frame);
}

}  // namespace halvane::capture
