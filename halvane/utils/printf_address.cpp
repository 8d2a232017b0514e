// Hardware, IP and socket addresses.
#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <net/if.h>

#include "halvane/base/byte_cursor.h"
#include "halvane/utils/printf_conversions_internal.h"

namespace halvane::printing {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t kIPv4Size = 4;
constexpr std::size_t kEthernetSize = 6;
constexpr std::size_t kFibreChannelSize = 8;
constexpr std::size_t kIPv6Size = 16;

// What %#a points to: the type in host byte order, then the address.
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

// An integer that a structure holds in the byte order of the host.
std::uint32_t hostOrderU32(ByteCursor& cursor) {
    const auto value = std::endian::native == std::endian::little ? cursor.u32le() : cursor.u32be();
    return value.value_or(0);
}

void appendIPv4(Scratch& text, ByteCursor cursor) {
    unsigned octets[kIPv4Size];
    for (unsigned& octet : octets) octet = cursor.u8().value_or(0);
    text.print("%u.%u.%u.%u", octets[0], octets[1], octets[2], octets[3]);
}

// Upper-case octets with colons between.
void appendHardware(Scratch& text, ByteCursor cursor) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::array<char, 3 * kFibreChannelSize> octets;
    std::size_t length = 0;
    while (const auto byte = cursor.u8()) {
        octets[length++] = kDigits[*byte >> 4];
        octets[length++] = kDigits[*byte & 0x0F];
        octets[length++] = ':';
    }
    text.append({octets.data(), length - 1});
}

bool areZero(Bytes bytes) {
    return std::ranges::all_of(bytes, [](std::uint8_t byte) { return byte == 0; });
}

// ::ffff:a.b.c.d (RFC 4291 clause 2.5.5.2)
bool isIPv4Mapped(ByteCursor address) {
    const auto zeros = address.take(10);
    return zeros && areZero(*zeros) && address.u16be() == 0xFFFF;
}

// ::a.b.c.d (RFC 4291 clause 2.5.5.1), which the unspecified and the loopback address are not.
bool isIPv4Compatible(ByteCursor address) {
    const auto zeros = address.take(12);
    return zeros && areZero(*zeros) && address.u32be().value_or(0) > 1;
}

using Groups = std::array<unsigned, 8>;

struct Run {
    std::size_t start = 0;
    std::size_t length = 0;
};

// The first of the longest runs of zero groups; of length 0 where no group is zero.
Run longestZeroRun(const Groups& groups) {
    Run best;
    Run current;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        current = groups[i] != 0 ? Run{i + 1, 0} : Run{current.start, current.length + 1};
        if (current.length > best.length) best = current;
    }
    return best;
}

// Unlike RFC 5952, a run of a single zero group is shortened too.
void appendGroups(Scratch& text, ByteCursor address) {
    Groups groups;
    for (unsigned& group : groups) group = address.u16be().value_or(0);
    const Run run = longestZeroRun(groups);
    for (std::size_t i = 0; i < groups.size(); ++i) {
        if (run.length > 0 && i == run.start) {
            text.append("::");
            i += run.length - 1;
            continue;
        }
        if (i > 0 && (run.length == 0 || i != run.start + run.length)) text.append(":");
        text.print("%x", groups[i]);
    }
}

// An interface name, or the index where the system knows none.
void appendScope(Scratch& text, std::uint32_t scope) {
    const int savedErrno = errno;
    char name[IF_NAMESIZE] = {};
    if (if_indextoname(scope, name) != nullptr) {
        text.print("%%%s", name);
    } else {
        text.print("%%%u", scope);
    }
    errno = savedErrno;
}

void appendSocketIPv4(Scratch& text, ByteCursor cursor) {
    cursor.skip(kSocketHeaderSize);
    const unsigned port = cursor.u16be().value_or(0);
    appendIPv4(text, cursor);
    if (port != 0) text.print(":%u", port);
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
    std::size_t size = 0;  // as the structure tells it
    Bytes bytes;           // what the structure holds of it
};

// Index, type, the lengths of name, address and selector, then these three.
LinkAddress linkAddress(ByteCursor cursor) {
    if (!cursor.skip(kSocketHeaderSize + 3)) return {};
    const auto nameSize = cursor.u8();
    const auto addressSize = cursor.u8();
    if (!cursor.skip(1) || !cursor.skip(*nameSize)) return {};
    const Bytes rest = cursor.rest();
    return {*addressSize, rest.first(std::min<std::size_t>(rest.size(), *addressSize))};
}

// An address that its structure ends within is no hardware address, whatever is left of it.
void appendSocketLink(Scratch& text, ByteCursor cursor) {
    const auto [size, bytes] = linkAddress(cursor);
    if (size == kEthernetSize && bytes.size() == size) {
        return appendHardware(text, ByteCursor(bytes));
    }
    const int shown = static_cast<int>(bytes.size());
    text.print("<< AF_LINK %H >>", bytes.data(), shown, shown);
}

// The family tells how long the address is, but for a link-level one, whose length byte does.
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
            return appendHardware(text, ByteCursor(std::span(data, size)));
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
    const ByteCursor cursor(address);
    if (port > 0) text.append("[");
    if (isIPv4Mapped(cursor) || isIPv4Compatible(cursor)) {
        text.append(isIPv4Mapped(cursor) ? "::ffff:" : "::");
        appendIPv4(text, ByteCursor(address.last(kIPv4Size)));
    } else {
        appendGroups(text, cursor);
    }
    if (scope != 0) appendScope(text, scope);
    if (port > 0) text.print("]:%d", port);
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
