#include "halvane/base/byte_buffer.h"

#include <cstring>
#include <new>

#include "halvane/base/ascii_internal.h"

namespace halvane {

// A block with a copy of the bytes behind it.
struct ByteBuffer::Copy : Block {
    static Copy& make(std::span<const std::uint8_t> bytes) {
        void* const memory = ::operator new(sizeof(Copy) + bytes.size());
        auto& copy = *::new (memory) Copy{{.owners = {}, .destroy = destroyCopy}};
        std::memcpy(copy.bytes(), bytes.data(), bytes.size());
        return copy;
    }
    std::uint8_t* bytes() { return reinterpret_cast<std::uint8_t*>(this + 1); }

    static void destroyCopy(Block& block) noexcept {
        ::operator delete(static_cast<Copy*>(&block));
    }
};

// A block for bytes of another owner.
struct ByteBuffer::Loan : Block {
    std::shared_ptr<const std::uint8_t[]> owner;

    static void destroyLoan(Block& block) noexcept { delete static_cast<Loan*>(&block); }
};

void ByteBuffer::shareCopyOf(std::span<const std::uint8_t> bytes) {
    Copy& copy = Copy::make(bytes);
    share(copy, {copy.bytes(), bytes.size()});
}

void ByteBuffer::destroy(Block& block) noexcept {
    block.destroy(block);
}

ByteBuffer ByteBuffer::sharing(std::shared_ptr<const std::uint8_t[]> owner, std::size_t size) {
    ByteBuffer buffer;
    if (!owner) return buffer;
    const std::uint8_t* const bytes = owner.get();
    buffer.share(*new Loan{{.owners = {}, .destroy = Loan::destroyLoan}, std::move(owner)},
                 {bytes, size});
    return buffer;
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
    text.reserve(size() * 2);
    for (std::uint8_t byte : bytes()) appendHexOctet(text, byte, kLowerHexDigits);
    return text;
}

std::string ByteBuffer::description() const {
    std::string text = "<";
    text.reserve(size() * 2 + size() / 4 + 2);
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
