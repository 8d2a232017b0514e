#include "halvane/base/byte_buffer.h"

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
        const auto digit = hexDigitValue(character);
        if (digit && high) {
            bytes += static_cast<char>(*high << 4 | *digit);
            high.reset();
        } else if (digit) {
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
