#include "halvane/utils/convert/hardware_address.h"

#include <climits>
#include <cstddef>
#include <cstdint>

#include "halvane/base/ascii_internal.h"
#include "halvane/base/mac_address.h"
#include "halvane/utils/text/cursor_internal.h"

namespace {

using halvane::TextCursor;

static_assert(kMACAddressSize == halvane::MacAddress::kSize);

constexpr std::size_t kFibreChannelSize = 8;

bool isLeadingSeparator(char character) {
    return character == ':' || character == '-' || character == ' ';
}

bool readByte(TextCursor& text, std::uint8_t& byte) {
    while (isLeadingSeparator(text.peek())) text.skip(1);
    if (!halvane::isHexDigit(text.peek())) return false;
    unsigned value = halvane::digitValue(text.peek());
    text.skip(1);
    if (halvane::isHexDigit(text.peek())) {
        value = value << 4 | halvane::digitValue(text.peek());
        text.skip(1);
    }
    byte = static_cast<std::uint8_t>(value);
    if (!text.atEnd() && !halvane::isHexDigit(text.peek())) text.skip(1);
    return true;
}

// Passes each byte to `store`. Returns whether all bytes were there.
template <typename Store>
bool readBytes(TextCursor text, std::size_t count, Store store) {
    for (; count > 0; --count) {
        std::uint8_t byte = 0;
        if (!readByte(text, byte)) return false;
        store(byte);
    }
    return true;
}

}  // namespace

// Reads the text twice, so that a late failure leaves the address unchanged.
HalvaneStatus TextToHardwareAddress(const char* text, std::size_t length, std::size_t count,
                                    void* address) {
    if (text == nullptr) return kStatusUnsupported;
    const TextCursor cursor(text, length);
    if (!readBytes(cursor, count, [](std::uint8_t) {})) return kStatusMalformed;
    if (address != nullptr) {
        auto* to = static_cast<std::uint8_t*>(address);
        readBytes(cursor, count, [&to](std::uint8_t byte) { *to++ = byte; });
    }
    return kStatusOK;
}

std::uint64_t TextToHardwareAddressScalar(const char* text, std::size_t length, std::size_t count) {
    if (count != kMACAddressSize && count != kFibreChannelSize) return 0;
    std::uint64_t value = 0;
    const TextCursor cursor(text, length);
    const bool isComplete =
        readBytes(cursor, count, [&value](std::uint8_t byte) { value = value << CHAR_BIT | byte; });
    return isComplete ? value : 0;
}

char* HardwareAddressToCString(const void* address, int count, char* buffer) {
    const auto* bytes = static_cast<const std::uint8_t*>(address);
    char* to = buffer;
    for (int i = 0; i < count; ++i) {
        if (i > 0) *to++ = ':';
        *to++ = halvane::kUpperHexDigits[bytes[i] >> 4];
        *to++ = halvane::kUpperHexDigits[bytes[i] & 0x0F];
    }
    *to = '\0';
    return buffer;
}
