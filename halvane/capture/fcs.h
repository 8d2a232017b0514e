// The frame check sequence (FCS): the last four octets of an 802.11 frame (IEEE 802.11-2020,
// 9.2.4.8). Some captures include it. The radio header tells whether a frame has it:
// RadioInfo::hasFCS.
//
// Free functions without state; any thread may call them.
#ifndef HALVANE_CAPTURE_FCS_H
#define HALVANE_CAPTURE_FCS_H

#include <cstddef>
#include <cstdint>
#include <span>

#include "halvane/base/cxx20.h"
#include "halvane/base/export.h"

namespace halvane::capture {

// The size of a frame check sequence in octets.
inline constexpr std::size_t kFCSSize = 4;

// Returns the frame check sequence of `frame`, a header and body: their CRC-32. It follows them
// with the least significant octet first.
HALVANE_EXPORT std::uint32_t frameCheckSequence(std::span<const std::uint8_t> frame) noexcept;

// Returns whether the last four octets of `frame` are the frame check sequence of the octets before
// them. Returns false if `frame` has fewer than four octets.
HALVANE_EXPORT bool endsInItsFCS(std::span<const std::uint8_t> frame) noexcept;

// Returns `frame` without the frame check sequence at its end. If the capture cut the last
// `missing` octets off the frame, only the captured part of the sequence is removed. A frame
// shorter than that part becomes empty. The result borrows from `frame`.
HALVANE_EXPORT std::span<const std::uint8_t> withoutFCS(std::span<const std::uint8_t> frame,
                                                        std::size_t missing = 0) noexcept;

}  // namespace halvane::capture

#endif
