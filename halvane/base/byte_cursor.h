// The one reader of received bytes: bounds-checked, little- and big-endian.
//
// A read that does not fit returns std::nullopt (or false), consumes nothing, and puts the cursor
// in a failed state for good: every later read fails too, however few bytes it asks for. A decoder
// may therefore read several fields and check only the last one: if that field is present, all
// fields before it are. After a failed read, position(), remaining() and atEnd() still describe the
// unread bytes, and rest() and restBuffer() still return all of them. A decoder can therefore tell
// "nothing left" from "part of a field left".
// A copy of a cursor fails separately, so a decoder can read ahead with a copy.
// A cursor borrows its bytes and must not outlive them. Threads must not share a cursor.
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
    // Begins at the first byte. REQUIRES: the bytes outlive the cursor.
    explicit ByteCursor(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    // A cursor over a buffer returns slices that share the buffer's memory.
    explicit ByteCursor(const ByteBuffer& buffer) : bytes_(buffer.bytes()), buffer_(&buffer) {}
    explicit ByteCursor(ByteBuffer&&) = delete;

    // The number of bytes read, the number that is left, and whether that is 0:
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

    // Returns the byte `offset` bytes ahead and consumes nothing. A peek past the end does not make
    // later reads fail.
    std::optional<std::uint8_t> peek(std::size_t offset = 0) const {
        if (hasFailed_ || offset >= remaining()) return std::nullopt;
        return bytes_[position_ + offset];
    }

    // Skips `count` bytes. Returns false, and reads nothing, if fewer are left.
    bool skip(std::size_t count) {
        if (!fits(count)) return false;
        position_ += count;
        return true;
    }

    // The next `count` bytes, borrowed from the cursor's bytes.
    std::optional<std::span<const std::uint8_t>> take(std::size_t count) {
        if (!fits(count)) return std::nullopt;
        const auto part = bytes_.subspan(position_, count);
        position_ += count;
        return part;
    }

    // The next `count` bytes, owned: a slice if the cursor reads a ByteBuffer, otherwise a copy.
    std::optional<ByteBuffer> takeBuffer(std::size_t count) {
        const std::size_t start = position_;
        const auto part = take(count);
        if (!part) return std::nullopt;
        return partFrom(start, *part);
    }

    // All unread bytes, also after a failed read. The cursor is at its end afterwards.
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
    // Returns whether `count` more bytes are left. If not, no read succeeds any more.
    bool fits(std::size_t count) {
        if (count > remaining()) hasFailed_ = true;
        return !hasFailed_;
    }

    // Returns `part`, which starts at `start`, as an owned buffer.
    ByteBuffer partFrom(std::size_t start, std::span<const std::uint8_t> part) const {
        return buffer_ ? buffer_->slice(start, part.size()) : ByteBuffer(part);
    }

    // Shifts give the same result on every host, and compilers turn them into one instruction where
    // they can.
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
