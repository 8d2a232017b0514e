// The frame check sequence: the four octets that end a frame in the air (IEEE 802.11-2020,
// 9.2.4.8). Some captures keep them; the radio header tells.
//
// Free functions without state; any thread may call them.
#ifndef HALVANE_CAPTURE_FCS_H
#define HALVANE_CAPTURE_FCS_H

#include <cstddef>
#include <cstdint>
#include <span>

#include "halvane/base/export.h"

namespace halvane::capture {

// In octets.
inline constexpr std::size_t kFCSSize = 4;

// `frame` without the frame check sequence that it ends in, or without as much of it as is there:
// the capture cut the last `missing` octets off the frame. Borrowed from `frame`.
HALVANE_EXPORT std::span<const std::uint8_t> withoutFCS(std::span<const std::uint8_t> frame,
                                                        std::size_t missing);

}  // namespace halvane::capture

#endif
