// A cursor over received bytes whose byte order is known at run time alone.
#ifndef TOOLS_HALVANE_INPUT_ORDERED_CURSOR_H
#define TOOLS_HALVANE_INPUT_ORDERED_CURSOR_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "halvane/base/byte_cursor.h"

namespace halvane::tool {

// A ByteCursor of that byte order.
class OrderedCursor {
  public:
    OrderedCursor(std::span<const std::uint8_t> bytes, bool isBigEndian)
        : cursor_(bytes), isBigEndian_(isBigEndian) {}

    std::optional<std::uint8_t> u8() { return cursor_.u8(); }
    std::optional<std::uint16_t> u16() { return isBigEndian_ ? cursor_.u16be() : cursor_.u16le(); }
    std::optional<std::uint32_t> u32() { return isBigEndian_ ? cursor_.u32be() : cursor_.u32le(); }
    std::optional<std::uint64_t> u64() { return isBigEndian_ ? cursor_.u64be() : cursor_.u64le(); }
    std::optional<std::span<const std::uint8_t>> take(std::size_t count) {
        return cursor_.take(count);
    }
    std::optional<OrderedCursor> part(std::size_t count) {
        const auto bytes = cursor_.take(count);
        return bytes ? std::optional(OrderedCursor(*bytes, isBigEndian_)) : std::nullopt;
    }
    // Skips what fills `size` octets up to a multiple of four.
    bool skipPadding(std::size_t size) { return cursor_.skip((4 - size % 4) % 4); }
    std::size_t remaining() const { return cursor_.remaining(); }

  private:
    ByteCursor cursor_;
    bool isBigEndian_;
};

}  // namespace halvane::tool

#endif
