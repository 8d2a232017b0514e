// The frame check sequence (FCS): the four octets that end an 802.11 frame (IEEE 802.11-2020,
// 9.2.4.8). Some captures keep it. The radio header tells whether one does: RadioInfo::hasFCS.
//
// Free functions without state; any thread may call them.
#ifndef HALVANE_CAPTURE_FCS_H
#define HALVANE_CAPTURE_FCS_H

#include <cstddef>
#include <cstdint>
#include <span>

#include "halvane/base/export.h"

namespace halvane::capture {

// The size of a frame check sequence in octets.
inline constexpr std::size_t kFCSSize = 4;

// The frame check sequence of a frame whose header and body are `frame`: their CRC-32. A frame ends
// in this number, its least significant octet first.
HALVANE_EXPORT std::uint32_t frameCheckSequence(std::span<const std::uint8_t> frame) noexcept;

// Returns whether the last four octets of `frame` are the frame check sequence of those before
// them. Returns false for a frame of fewer than four octets.
HALVANE_EXPORT bool endsInItsFCS(std::span<const std::uint8_t> frame) noexcept;

// Returns `frame` without the frame check sequence at its end. If the capture cut the last
// `missing` octets off the frame, only what it kept of the sequence is removed. A frame that is
// shorter than that becomes empty. The result borrows from `frame`.
HALVANE_EXPORT std::span<const std::uint8_t> withoutFCS(std::span<const std::uint8_t> frame,
                                                        std::size_t missing = 0) noexcept;

}  // namespace halvane::capture

#endif
