#include "halvane/base/byte_buffer.h"

#include <algorithm>
#include <utility>

namespace halvane {

namespace {

constexpr char kHexDigits[] = "0123456789abcdef";

void appendHex(std::string& text, std::uint8_t byte) {
    text += kHexDigits[byte >> 4];
    text += kHexDigits[byte & 0x0F];
}

std::optional<unsigned> hexDigitValue(char digit) {
    if (digit >= '0' && digit <= '9') return static_cast<unsigned>(digit - '0');
    if (digit >= 'a' && digit <= 'f') return static_cast<unsigned>(digit - 'a') + 10;
    if (digit >= 'A' && digit <= 'F') return static_cast<unsigned>(digit - 'A') + 10;
    return std::nullopt;
}

}  // namespace

ByteBuffer::ByteBuffer(std::span<const std::uint8_t> bytes) : size_(bytes.size()) {
    if (size_ <= kInlineCapacity) {
        std::copy(bytes.begin(), bytes.end(), inline_.begin());
        return;
    }
    auto copy = std::make_shared_for_overwrite<std::uint8_t[]>(size_);
    std::copy(bytes.begin(), bytes.end(), copy.get());
    shared_ = std::move(copy);
}

ByteBuffer::ByteBuffer(std::initializer_list<std::uint8_t> bytes)
    : ByteBuffer(std::span(bytes.begin(), bytes.size())) {}

ByteBuffer ByteBuffer::fromText(std::string_view text) {
    return ByteBuffer(std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
}

ByteBuffer ByteBuffer::sharing(std::shared_ptr<const std::uint8_t[]> owner, std::size_t size) {
    ByteBuffer buffer;
    buffer.shared_ = std::move(owner);
    buffer.size_ = buffer.shared_ ? size : 0;
    return buffer;
}

std::optional<ByteBuffer> ByteBuffer::fromHex(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size() / 2);
    std::optional<unsigned> high;
    for (char character : text) {
        const auto digit = hexDigitValue(character);
        if (digit && high) {
            bytes += static_cast<char>(*high << 4 | *digit);
            high.reset();
        } else if (digit) {
            high = digit;
        } else if (high || std::string_view(" \t\r\n:").find(character) == std::string_view::npos) {
            return std::nullopt;
        }
    }
    if (high) return std::nullopt;
    return fromText(bytes);
}

// A moved-from buffer is empty, so that its size never outlives its bytes.
ByteBuffer::ByteBuffer(ByteBuffer&& other) noexcept
    : shared_(std::move(other.shared_)),
      size_(std::exchange(other.size_, 0)),
      inline_(other.inline_) {}

ByteBuffer& ByteBuffer::operator=(ByteBuffer&& other) noexcept {
    if (this == &other) return *this;
    shared_ = std::move(other.shared_);
    size_ = std::exchange(other.size_, 0);
    inline_ = other.inline_;
    return *this;
}

ByteBuffer ByteBuffer::slice(std::size_t offset, std::size_t length) const {
    const auto from = std::min(offset, size_);
    const auto part = bytes().subspan(from, std::min(length, size_ - from));
    if (part.size() <= kInlineCapacity) return ByteBuffer(part);
    return sharing(std::shared_ptr<const std::uint8_t[]>(shared_, part.data()), part.size());
}

std::string ByteBuffer::hex() const {
    std::string text;
    text.reserve(size_ * 2);
    for (std::uint8_t byte : bytes()) appendHex(text, byte);
    return text;
}

std::string ByteBuffer::description() const {
    std::string text = "<";
    text.reserve(size_ * 2 + size_ / 4 + 2);
    std::size_t index = 0;
    for (std::uint8_t byte : bytes()) {
        if (index > 0 && index % 4 == 0) text += ' ';
        appendHex(text, byte);
        ++index;
    }
    return text += '>';
}

bool operator==(const ByteBuffer& a, const ByteBuffer& b) {
    return std::ranges::equal(a.bytes(), b.bytes());
}

}  // namespace halvane
