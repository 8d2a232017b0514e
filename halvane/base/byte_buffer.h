// Immutable bytes with shared ownership.
//
// Copying or slicing a buffer shares its memory. A buffer of up to kInlineCapacity bytes (a MAC
// address, most element bodies) is stored inside the object and allocates nothing.
//
// Threads: distinct objects may be used from distinct threads even if they share memory. One object
// follows the rules of a standard container.
#ifndef HALVANE_BASE_BYTE_BUFFER_H
#define HALVANE_BASE_BYTE_BUFFER_H

#include <algorithm>
#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "halvane/base/cxx20.h"
#include "halvane/base/export.h"
#include "halvane/base/share_count.h"

namespace halvane {

class HALVANE_EXPORT ByteBuffer {
  public:
    // The bytes that a buffer holds without an allocation.
    static constexpr std::size_t kInlineCapacity = 16;

    // The empty buffer.
    constexpr ByteBuffer() noexcept : storage_(), size_(0) {}

    // Holds a private copy of `bytes`.
    explicit ByteBuffer(std::span<const std::uint8_t> bytes) : ByteBuffer() {
        if (bytes.size() <= kInlineCapacity) {
            copyInline(bytes);
        } else {
            shareCopyOf(bytes);
        }
    }
    ByteBuffer(std::initializer_list<std::uint8_t> bytes);

    // The same as whole.slice(offset, length).
    ByteBuffer(const ByteBuffer& whole, std::size_t offset, std::size_t length) : ByteBuffer() {
        const auto from = std::min(offset, whole.size());
        const auto part = whole.bytes().subspan(from, std::min(length, whole.size() - from));
        if (part.size() <= kInlineCapacity) {
            copyInline(part);
        } else {
            share(*whole.storage_.shared.block, part);
            storage_.shared.block->owners.add();
        }
    }

    // A private copy of the text's bytes, without a terminator.
    static ByteBuffer fromText(std::string_view text);

    // Shares memory that the caller already owns; no byte is copied.
    // REQUIRES: `owner` holds at least `size` bytes, and nobody writes to them any more.
    static ByteBuffer sharing(std::shared_ptr<const std::uint8_t[]> owner, std::size_t size);

    // Reads pairs of hexadecimal digits of either case. White space, ':' and '-' may separate
    // pairs. Absent for an odd digit or any other character.
    static std::optional<ByteBuffer> fromHex(std::string_view text);
    // Share the bytes if there are more than kInlineCapacity; allocate nothing.
    ByteBuffer(const ByteBuffer& other) noexcept : storage_(other.storage_), size_(other.size_) {
        if (isShared()) storage_.shared.block->owners.add();
    }
    ByteBuffer& operator=(const ByteBuffer& other) noexcept {  // shares as copying does
        if (other.isShared()) other.storage_.shared.block->owners.add();
        releaseShare();
        storage_ = other.storage_;
        size_ = other.size_;
        return *this;
    }
    // A moved-from buffer is empty, so that its size never outlives its bytes.
    ByteBuffer(ByteBuffer&& other) noexcept
        : storage_(other.storage_), size_(std::exchange(other.size_, 0)) {}
    ByteBuffer& operator=(ByteBuffer&& other) noexcept {
        if (this == &other) return *this;
        releaseShare();
        storage_ = other.storage_;
        size_ = std::exchange(other.size_, 0);
        return *this;
    }
    ~ByteBuffer() { releaseShare(); }

    std::size_t size() const { return size_ & ~kSharedBit; }
    bool empty() const { return size() == 0; }

    // The bytes. The span is valid until this object is assigned to, moved from or destroyed.
    std::span<const std::uint8_t> bytes() const& {
        return {isShared() ? storage_.shared.bytes : storage_.own.data(), size()};
    }
    std::span<const std::uint8_t> bytes() const&& = delete;

    // Iterators over the same bytes, valid as long as bytes() is.
    const std::uint8_t* begin() const& { return bytes().data(); }
    const std::uint8_t* end() const& { return begin() + size(); }
    const std::uint8_t* begin() const&& = delete;
    const std::uint8_t* end() const&& = delete;

    // The same bytes as text, whose encoding is not checked. Valid as long as bytes() is.
    std::string_view text() const& {
        return {reinterpret_cast<const char*>(bytes().data()), size()};
    }
    std::string_view text() const&& = delete;

    // Returns `length` bytes from `offset` on. Both are clamped to what the buffer holds.
    ByteBuffer slice(std::size_t offset, std::size_t length = SIZE_MAX) const {
        return ByteBuffer(*this, offset, length);
    }

    // Lower-case digits without separators: "0a7e55".
    std::string hex() const;

    // Groups of four bytes between angle brackets: "<00112233 4455>".
    std::string description() const;

    // Equal buffers have the same length and the same bytes.
    friend HALVANE_EXPORT bool operator==(const ByteBuffer& a, const ByteBuffer& b);
    // Orders by the first byte that differs, as an unsigned value. A buffer comes before a longer
    // one that begins with it.
    friend HALVANE_EXPORT std::strong_ordering operator<=>(const ByteBuffer& a,
                                                           const ByteBuffer& b);

  private:
    // Memory that buffers share. What follows it depends on who made it.
    struct Block {
        ShareCount owners;
        void (*destroy)(Block& block) noexcept;
    };
    struct Copy;
    struct Loan;

    union Storage {
        std::array<std::uint8_t, kInlineCapacity> own{};
        struct {
            Block* block;
            const std::uint8_t* bytes;
        } shared;
    };

    // The bit of size_ that tells which kind of storage there is.
    static constexpr std::size_t kSharedBit = ~(SIZE_MAX >> 1);

    bool isShared() const { return (size_ & kSharedBit) != 0; }
    void share(Block& block, std::span<const std::uint8_t> bytes) {
        storage_.shared = {&block, bytes.data()};
        size_ = bytes.size() | kSharedBit;
    }
    void shareCopyOf(std::span<const std::uint8_t> bytes);
    void releaseShare() noexcept {
        if (isShared() && storage_.shared.block->owners.remove()) destroy(*storage_.shared.block);
    }
    static void destroy(Block& block) noexcept;

    // Copies two words of fixed size, which may overlap. Elements are short and many, and a copy of
    // variable length costs a function call. REQUIRES: bytes.size() <= kInlineCapacity.
    void copyInline(std::span<const std::uint8_t> bytes) {
        const auto copyEnds = [&]<typename Word>(Word) {
            const std::size_t last = bytes.size() - sizeof(Word);
            std::memcpy(storage_.own.data(), bytes.data(), sizeof(Word));
            std::memcpy(storage_.own.data() + last, bytes.data() + last, sizeof(Word));
        };
        if (bytes.size() >= sizeof(std::uint64_t)) {
            copyEnds(std::uint64_t{});
        } else if (bytes.size() >= sizeof(std::uint32_t)) {
            copyEnds(std::uint32_t{});
        } else {
            for (std::size_t i = 0; i < bytes.size(); ++i) storage_.own[i] = bytes[i];
        }
        size_ = bytes.size();
    }

    Storage storage_;
    std::size_t size_;
};

}  // namespace halvane

// Within one process equal buffers have the same hash.
template <>
struct std::hash<halvane::ByteBuffer> {
    // The hash of the bytes.
    std::size_t operator()(const halvane::ByteBuffer& buffer) const noexcept {
        return std::hash<std::string_view>()(buffer.text());
    }
};

#endif
