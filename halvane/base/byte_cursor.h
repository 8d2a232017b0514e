// The one reader of received bytes: bounds-checked, little- and big-endian.
//
// A read that does not fit returns std::nullopt (or false), consumes nothing and fails the cursor
// for good: every later read fails too, however few bytes it asks for. So a decoder may read
// several fields and look at the last one alone: where that is there, all before it are. What the
// failed read left unread is still told (position, remaining, atEnd) and handed out whole (rest,
// restBuffer), so "nothing left" and "part of a field left" stay two different things.
// A copy of a cursor fails on its own: read ahead with a copy.
// A cursor borrows its bytes: it must not outlive them. Not for sharing between threads.
#ifndef HALVANE_BASE_BYTE_CURSOR_H
#define HALVANE_BASE_BYTE_CURSOR_H

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "halvane/base/byte_buffer.h"

namespace halvane {

class ByteCursor {
  public:
    explicit ByteCursor(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    // A cursor over a buffer hands out slices that share the buffer's memory.
    explicit ByteCursor(const ByteBuffer& buffer) : bytes_(buffer.bytes()), buffer_(&buffer) {}
    explicit ByteCursor(ByteBuffer&&) = delete;

    std::size_t position() const { return position_; }
    std::size_t remaining() const { return bytes_.size() - position_; }
    bool atEnd() const { return remaining() == 0; }

    // One byte, or a 16-, 32- or 64-bit integer of the named byte order.
    std::optional<std::uint8_t> u8() { return littleEndian<std::uint8_t>(); }
    std::optional<std::uint16_t> u16le() { return littleEndian<std::uint16_t>(); }
    std::optional<std::uint32_t> u32le() { return littleEndian<std::uint32_t>(); }
    std::optional<std::uint64_t> u64le() { return littleEndian<std::uint64_t>(); }
    std::optional<std::uint16_t> u16be() { return bigEndian<std::uint16_t>(); }
    std::optional<std::uint32_t> u32be() { return bigEndian<std::uint32_t>(); }
    std::optional<std::uint64_t> u64be() { return bigEndian<std::uint64_t>(); }

    // The byte `offset` bytes ahead, without consuming anything. A look past the end fails no later
    // read.
    std::optional<std::uint8_t> peek(std::size_t offset = 0) const {
        if (hasFailed_ || offset >= remaining()) return std::nullopt;
        return bytes_[position_ + offset];
    }

    bool skip(std::size_t count) {
        if (!fits(count)) return false;
        position_ += count;
        return true;
    }

    // The next `count` bytes, borrowed.
    std::optional<std::span<const std::uint8_t>> take(std::size_t count) {
        if (!fits(count)) return std::nullopt;
        const auto part = bytes_.subspan(position_, count);
        position_ += count;
        return part;
    }

    // The next `count` bytes, owned: a slice where the cursor stands on a buffer, else a copy.
    std::optional<ByteBuffer> takeBuffer(std::size_t count) {
        const std::size_t start = position_;
        const auto part = take(count);
        if (!part) return std::nullopt;
        return partFrom(start, *part);
    }

    // Everything left, after a failed read too; the cursor is at its end afterwards.
    std::span<const std::uint8_t> rest() {
        const auto part = bytes_.subspan(position_);
        position_ = bytes_.size();
        return part;
    }
    ByteBuffer restBuffer() {
        const std::size_t start = position_;
        return partFrom(start, rest());
    }

  private:
    // Whether `count` more bytes are there to read; where not, no read succeeds from here on.
    bool fits(std::size_t count) {
        if (count > remaining()) hasFailed_ = true;
        return !hasFailed_;
    }

    // `part`, which starts at `start`, owned.
    ByteBuffer partFrom(std::size_t start, std::span<const std::uint8_t> part) const {
        return buffer_ ? buffer_->slice(start, part.size()) : ByteBuffer(part);
    }

    // Built by shifts: the same on every host, and one instruction where it can be.
    template <std::unsigned_integral Integer>
    std::optional<Integer> littleEndian() {
        const auto part = take(sizeof(Integer));
        if (!part) return std::nullopt;
        std::uint64_t value = 0;
        for (std::size_t i = sizeof(Integer); i-- > 0;) value = value << 8 | (*part)[i];
        return static_cast<Integer>(value);
    }

    template <std::unsigned_integral Integer>
    std::optional<Integer> bigEndian() {
        const auto part = take(sizeof(Integer));
        if (!part) return std::nullopt;
        std::uint64_t value = 0;
        for (std::uint8_t byte : *part) value = value << 8 | byte;
        return static_cast<Integer>(value);
    }

    std::span<const std::uint8_t> bytes_;
    const ByteBuffer* buffer_ = nullptr;
    std::size_t position_ = 0;
    bool hasFailed_ = false;
};

}  // namespace halvane

#endif
