#include "halvane/utils/convert/ipv4_address.h"

#include <charconv>
#include <climits>

#include "halvane/utils/convert/ipv4_address_internal.h"

namespace halvane {

namespace {

// The optional parts after an address.
struct Suffix {
    AddressPart port;
    AddressPart prefix;
};

HalvaneStatus readPart(TextCursor& text, char mark, bool isForbidden, std::uint32_t max,
                       AddressPart& part) {
    if (!text.skipIf(mark)) return kStatusOK;
    if (isForbidden) return kStatusForbidden;
    return part.read(text, max);
}

HalvaneStatus readSuffix(TextCursor& text, std::uint32_t flags, Suffix& suffix) {
    const bool isPortForbidden = (flags & kIPv4AddressFlagNoPort) != 0;
    const bool isPrefixForbidden = (flags & kIPv4AddressFlagNoPrefix) != 0;
    const HalvaneStatus status = readPart(text, ':', isPortForbidden, kIPPortMax, suffix.port);
    if (status != kStatusOK) return status;
    return readPart(text, '/', isPrefixForbidden, kIPv4PrefixMax, suffix.prefix);
}

// The shift count is taken modulo 32, so a prefix of 0 gives the same mask as one of 32.
std::uint32_t maskOf(std::uint32_t prefix) {
    return UINT32_MAX << ((32 - prefix) % 32);
}

template <typename Value>
void store(Value* destination, Value value) {
    if (destination != nullptr) *destination = value;
}

}  // namespace

HalvaneStatus readIPv4Address(TextCursor& text, std::uint32_t& address) {
    std::uint32_t value = 0;
    for (int part = 0; part < kIPv4AddressSize; ++part) {
        std::uint32_t number = 0;
        const HalvaneStatus status = text.decimal(UINT8_MAX, number);
        if (status == kStatusMalformed) return kStatusTooFew;
        if (status != kStatusOK) return status;
        value = value << CHAR_BIT | number;
        const bool isLast = part == kIPv4AddressSize - 1;
        if (text.skipIf('.') ? isLast : !isLast) return isLast ? kStatusMalformed : kStatusTooFew;
    }
    address = value;
    return kStatusOK;
}

char* putIPv4Address(char* to, std::uint32_t address) {
    for (int shift = 24; shift >= 0; shift -= CHAR_BIT) {
        to = std::to_chars(to, to + 3, address >> shift & UINT8_MAX).ptr;
        if (shift > 0) *to++ = '.';
    }
    return to;
}

char* putPort(char* to, int port) {
    *to++ = ':';
    return std::to_chars(to, to + 10, port).ptr;
}

}  // namespace halvane

HalvaneStatus ParseIPv4Address(const char* text, std::uint8_t* address, const char** end) {
    if (text == nullptr) return kStatusUnsupported;
    halvane::TextCursor cursor(text, SIZE_MAX);
    std::uint32_t value = 0;
    const HalvaneStatus status = halvane::readIPv4Address(cursor, value);
    if (status != kStatusOK) return status;
    if (address != nullptr) {
        for (int i = 0; i < kIPv4AddressSize; ++i) {
            address[i] = static_cast<std::uint8_t>(value >> (24 - CHAR_BIT * i));
        }
    }
    halvane::store(end, cursor.position());
    return kStatusOK;
}

HalvaneStatus StringToIPv4Address(const char* text, std::uint32_t flags, std::uint32_t* address,
                                  int* port, std::uint32_t* mask, std::uint32_t* router,
                                  const char** end) {
    if (text == nullptr) return kStatusUnsupported;
    halvane::TextCursor cursor(text, SIZE_MAX);
    std::uint32_t value = 0;
    halvane::Suffix suffix;
    HalvaneStatus status = halvane::readIPv4Address(cursor, value);
    if (status == kStatusOK) status = halvane::readSuffix(cursor, flags, suffix);
    if (status != kStatusOK) return status;

    halvane::store(address, value);
    suffix.port.storeAt(port);
    if (suffix.prefix.isThere) {
        const std::uint32_t prefixMask = halvane::maskOf(suffix.prefix.value);
        halvane::store(mask, prefixMask);
        halvane::store(router, (value & prefixMask) | 1);
    }
    halvane::store(end, cursor.position());
    return kStatusOK;
}

char* IPv4AddressToCString(std::uint32_t address, int port, char* buffer) {
    char* to = halvane::putIPv4Address(buffer, address);
    if (port > 0) to = halvane::putPort(to, port);
    *to = '\0';
    return buffer;
}
