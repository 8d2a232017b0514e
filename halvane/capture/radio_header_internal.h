// The readers of radio headers, one for each kind.
//
// They store what a header tells where it stays, since a copy of what was just written takes longer
// than reading it.
#ifndef HALVANE_CAPTURE_RADIO_HEADER_INTERNAL_H
#define HALVANE_CAPTURE_RADIO_HEADER_INTERNAL_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "halvane/base/byte_cursor.h"
#include "halvane/capture/link_type.h"
#include "halvane/capture/radio_header.h"

namespace halvane::capture {

// Reads a header as parseRadioHeader() does. Returns false for a malformed header; then `info`
// holds parts of it. REQUIRES: `info` is empty.
bool readRadioHeader(LinkType linkType, std::span<const std::uint8_t> packet, RadioInfo& info);

// The same for one kind:
bool readRadiotapHeader(std::span<const std::uint8_t> packet, RadioInfo& info);
bool readPrismHeader(std::span<const std::uint8_t> packet, RadioInfo& info);
bool readAVSHeader(std::span<const std::uint8_t> packet, RadioInfo& info);
bool readPPIHeader(std::span<const std::uint8_t> packet, RadioInfo& info);

// The AVS magic with its version digit cleared; versions 1 and 2 exist.
inline constexpr std::uint32_t kAVSMagic = 0x80211000;
inline constexpr std::uint32_t kAVSMagicMask = 0xFFFFF000;

// A packet split into its header of a stated length and the rest.
struct SplitPacket {
    ByteCursor header;
    std::span<const std::uint8_t> frame;
};

// Absent if the packet is shorter than the header.
inline std::optional<SplitPacket> splitPacket(std::span<const std::uint8_t> packet,
                                              std::size_t headerLength) {
    ByteCursor cursor(packet);
    const auto header = cursor.take(headerLength);
    if (!header) return std::nullopt;
    return SplitPacket{ByteCursor(*header), cursor.rest()};
}

// Skips to the next multiple of `alignment` bytes, counted from the cursor's first byte.
inline bool skipToAlignment(ByteCursor& cursor, std::size_t alignment) {
    return cursor.skip((alignment - cursor.position() % alignment) % alignment);
}

// Keeps the first value that a header gives.
inline void setIfAbsent(std::optional<int>& slot, int value) {
    if (!slot) slot = value;
}

}  // namespace halvane::capture

#endif
