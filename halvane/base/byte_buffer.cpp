#include "halvane/base/byte_buffer.h"

#include "halvane/base/ascii_internal.h"

namespace halvane {

std::shared_ptr<const std::uint8_t[]> ByteBuffer::sharedCopyOf(
    std::span<const std::uint8_t> bytes) {
    auto copy = std::make_shared_for_overwrite<std::uint8_t[]>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), copy.get());
    return copy;
}

ByteBuffer::ByteBuffer(std::initializer_list<std::uint8_t> bytes)
    : ByteBuffer(std::span(bytes.begin(), bytes.size())) {}

ByteBuffer ByteBuffer::fromText(std::string_view text) {
    return ByteBuffer(std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
}

std::optional<ByteBuffer> ByteBuffer::fromHex(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size() / 2);
    std::optional<unsigned> high;
    for (char character : text) {
        if (const unsigned digit = digitValue(character); digit < 16 && high) {
            bytes += static_cast<char>(*high << 4 | digit);
            high.reset();
        } else if (digit < 16) {
            high = digit;
        } else if (high ||
                   std::string_view(" \t\r\n:-").find(character) == std::string_view::npos) {
            return std::nullopt;
        }
    }
    if (high) return std::nullopt;
    return fromText(bytes);
}

std::string ByteBuffer::hex() const {
    std::string text;
    text.reserve(size_ * 2);
    for (std::uint8_t byte : bytes()) appendHexOctet(text, byte, kLowerHexDigits);
    return text;
}

std::string ByteBuffer::description() const {
    std::string text = "<";
    text.reserve(size_ * 2 + size_ / 4 + 2);
    std::size_t index = 0;
    for (std::uint8_t byte : bytes()) {
        if (index > 0 && index % 4 == 0) text += ' ';
        appendHexOctet(text, byte, kLowerHexDigits);
        ++index;
    }
    return text += '>';
}

bool operator==(const ByteBuffer& a, const ByteBuffer& b) {
    return a.text() == b.text();
}

std::strong_ordering operator<=>(const ByteBuffer& a, const ByteBuffer& b) {
    return a.text() <=> b.text();
}

}  // namespace halvane
