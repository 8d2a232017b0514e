// Hardware, IP and socket addresses.
#include <algorithm>
#include <bit>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <span>

#include "halvane/base/byte_cursor.h"
#include "halvane/utils/convert/hardware_address.h"
#include "halvane/utils/convert/ipv4_address.h"
#include "halvane/utils/convert/ipv6_address.h"
#include "halvane/utils/printf.h"
#include "halvane/utils/printf/conversions_internal.h"
#include "halvane/utils/printf/engine_internal.h"

namespace halvane::printing {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t kIPv4Size = kIPv4AddressSize;
constexpr std::size_t kEthernetSize = kMACAddressSize;
constexpr std::size_t kFibreChannelSize = 8;
constexpr std::size_t kIPv6Size = kIPv6AddressSize;

// The data of %#a: the type in host byte order, then the address.
enum TaggedType : std::uint32_t { kTaggedIPv4 = 4, kTaggedIPv6 = 6 };
constexpr std::size_t kTagSize = 4;

// The families of a socket address that begins with a length byte and a family byte.
enum Family : std::uint8_t {
    kFamilyUnspecified = 0,
    kFamilyIPv4 = 2,
    kFamilyLink = 18,
    kFamilyIPv6 = 30
};
constexpr std::size_t kSocketHeaderSize = 2;
constexpr std::size_t kSocketIPv4Size = 8;   // header, port, address
constexpr std::size_t kSocketIPv6Size = 28;  // header, port, flow, address, scope

// Reads an integer that a structure stores in host byte order.
std::uint32_t hostOrderU32(ByteCursor& cursor) {
    const auto value = std::endian::native == std::endian::little ? cursor.u32le() : cursor.u32be();
    return value.value_or(0);
}

void appendIPv4(Scratch& text, ByteCursor cursor, int port = 0) {
    char address[kIPv4AddressTextSize];
    text.append(IPv4AddressToCString(cursor.u32be().value_or(0), port, address));
}

// Appends upper-case octets separated by colons.
void appendHardware(Scratch& text, Bytes bytes) {
    char address[HALVANE_HARDWARE_ADDRESS_TEXT_SIZE(kFibreChannelSize)];
    text.append(HardwareAddressToCString(bytes.data(), static_cast<int>(bytes.size()), address));
}

void appendSocketIPv4(Scratch& text, ByteCursor cursor) {
    cursor.skip(kSocketHeaderSize);
    const int port = cursor.u16be().value_or(0);
    appendIPv4(text, cursor, port);
}

void appendSocketIPv6(Scratch& text, ByteCursor cursor) {
    cursor.skip(kSocketHeaderSize);
    const int port = cursor.u16be().value_or(0);
    cursor.skip(4);  // flow information
    const Bytes address = cursor.take(kIPv6Size).value_or(Bytes());
    const std::uint32_t scope = hostOrderU32(cursor);
    PrintF_IPv6AddressToCString(text, address, scope, port);
}

struct LinkAddress {
    std::size_t size = 0;  // as the structure states it
    Bytes bytes;           // the part of it inside the structure
};

// The fields are index, type, the lengths of name, address and selector, and then these three.
LinkAddress linkAddress(ByteCursor cursor) {
    if (!cursor.skip(kSocketHeaderSize + 3)) return {};
    const auto nameSize = cursor.u8();
    const auto addressSize = cursor.u8();
    if (!cursor.skip(1) || !cursor.skip(*nameSize)) return {};
    const Bytes rest = cursor.rest();
    return {*addressSize, rest.first(std::min<std::size_t>(rest.size(), *addressSize))};
}

// A truncated address does not count as a hardware address, whatever is left of it.
void appendSocketLink(Scratch& text, ByteCursor cursor) {
    const auto [size, bytes] = linkAddress(cursor);
    if (size == kEthernetSize && bytes.size() == size) {
        return appendHardware(text, bytes);
    }
    const int shown = static_cast<int>(bytes.size());
    text.print("<< AF_LINK %H >>", bytes.data(), shown, shown);
}

// The family determines the length of the address. A link-level address has a length byte.
void appendSocketAddress(Scratch& text, const std::uint8_t* data) {
    ByteCursor header(std::span(data, kSocketHeaderSize));
    const std::size_t length = header.u8().value_or(0);
    const int family = header.u8().value_or(0);
    switch (family) {
        case kFamilyUnspecified:
            return text.append("<< AF_UNSPEC >>");
        case kFamilyIPv4:
            return appendSocketIPv4(text, ByteCursor(std::span(data, kSocketIPv4Size)));
        case kFamilyIPv6:
            return appendSocketIPv6(text, ByteCursor(std::span(data, kSocketIPv6Size)));
        case kFamilyLink:
            return appendSocketLink(text, ByteCursor(std::span(data, length)));
        default:
            return text.print("<< ERROR: %%##a used with unknown family: %d >>", family);
    }
}

void appendTaggedAddress(Scratch& text, const std::uint8_t* data) {
    ByteCursor tag(std::span(data, kTagSize));
    const std::uint32_t type = hostOrderU32(tag);
    if (type != kTaggedIPv4 && type != kTaggedIPv6) {
        return text.print("<< ERROR: %%#a used with unsupported type: %d >>", type);
    }
    const std::size_t size = type == kTaggedIPv4 ? kIPv4Size : kIPv6Size;
    ByteCursor cursor(std::span(data, kTagSize + size));
    cursor.skip(kTagSize);
    if (type == kTaggedIPv4) return appendIPv4(text, cursor);
    PrintF_IPv6AddressToCString(text, cursor.rest(), 0, 0);
}

// The precision is the size of the address.
void appendPlainAddress(Scratch& text, const std::uint8_t* data, std::size_t size) {
    switch (size) {
        case kIPv4Size:
            return appendIPv4(text, ByteCursor(std::span(data, size)));
        case kEthernetSize:
        case kFibreChannelSize:
            return appendHardware(text, std::span(data, size));
        case kIPv6Size:
            return PrintF_IPv6AddressToCString(text, std::span(data, size), 0, 0);
        default:
            return text.append(
                "<< ERROR: Must specify address size "
                "(i.e. %.4a=IPv4, %.6a=Enet, %.8a=Fibre, %.16a=IPv6) >>");
    }
}

}  // namespace

void PrintF_IPv6AddressToCString(Scratch& text, Bytes address, std::uint32_t scope, int port) {
    char buffer[kIPv6AddressTextSize];
    text.append(IPv6AddressToCString(address.data(), scope, port, buffer));
}

void convertAddress(Output& output, Conversion& conversion, Arguments& arguments) {
    const PrintFFormat& format = conversion.format;
    const auto* data = va_arg(arguments.list, const std::uint8_t*);
    if (data == nullptr) return PrintFWriteText(output, format, kNullText);
    Scratch text;
    if (format.altForm == 0) {
        appendPlainAddress(text, data, precisionOf(format));
    } else if (format.altForm == 1) {
        appendTaggedAddress(text, data);
    } else {
        appendSocketAddress(text, data);
    }
    PrintFWriteText(output, format, text.text());
}

}  // namespace halvane::printing
