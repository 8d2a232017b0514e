#include "halvane/ie/fancy_formatting.h"

#include <cstddef>
#include <cstdint>

#include "halvane/base/ascii_internal.h"
#include "halvane/base/byte_cursor.h"
#include "halvane/base/describe.h"
#include "halvane/base/mac_address.h"

namespace halvane::FancyFormatting {

namespace {

constexpr std::size_t kBytesPerRow = 32;

}  // namespace

std::string formattedMAC(const ByteBuffer& address) {
    std::string text;
    ByteCursor cursor(address);
    for (std::size_t i = 0; i < MacAddress::kSize; ++i) {
        const auto byte = cursor.u8();
        if (!byte) break;
        if (i > 0) text += ':';
        appendHexOctet(text, *byte, kUpperHexDigits);
    }
    return text;
}

std::string formattedData_includeHex(const ByteBuffer& data, bool includeHex) {
    std::string text;
    if (includeHex) text = data.hex() + "  |  ";
    for (std::uint8_t byte : data.bytes()) {
        text += isPrintable(byte) ? static_cast<char>(byte) : '.';
    }
    return text;
}

std::string formattedHexData(const ByteBuffer& data) {
    std::string text;
    text.reserve(data.size() * 3 + data.size() / kBytesPerRow);
    std::size_t index = 0;
    for (std::uint8_t byte : data.bytes()) {
        if (index > 0 && index % kBytesPerRow == 0) text += '\n';
        appendHexOctet(text, byte, kUpperHexDigits);
        text += ' ';
        ++index;
    }
    return text;
}

std::string formattedHexData(const std::optional<ByteBuffer>& data) {
    return data ? formattedHexData(*data) : describe(data);
}

}  // namespace halvane::FancyFormatting
