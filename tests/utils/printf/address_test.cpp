#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <net/if.h>

#include "halvane/base/byte_buffer.h"

#include "tests/support/hostile_bytes.h"
#include "tests/utils/printf/test_support.h"

namespace {

using halvane::testing::Bytes;
using halvane::testing::exactHeapCopy;
using halvane::testing::printed;

std::string address(const char* format, const Bytes& bytes) {
    const auto copy = exactHeapCopy(bytes);
    return printed(format, copy.bytes().data());
}

template <typename... Parts>
Bytes joined(const Parts&... parts) {
    Bytes all;
    (std::ranges::copy(parts, std::back_inserter(all)), ...);
    return all;
}

// An integer as a structure of the host holds it.
Bytes hostOrder(std::uint32_t value) {
    Bytes bytes(sizeof(value));
    std::memcpy(bytes.data(), &value, sizeof(value));
    return bytes;
}

constexpr const char* kSizeError =
    "<< ERROR: Must specify address size (i.e. %.4a=IPv4, %.6a=Enet, %.8a=Fibre, %.16a=IPv6) >>";

TEST(PrintFAddress, PrintsBySize) {
    EXPECT_EQ(address("%.4a", {192, 0, 2, 255}), "192.0.2.255");
    EXPECT_EQ(address("%.4a", {0, 0, 0, 0}), "0.0.0.0");
    EXPECT_EQ(address("%.6a", {0x00, 0x11, 0x22, 0x33, 0x44, 0x55}), "00:11:22:33:44:55");
    EXPECT_EQ(address("%.6a", {0xAB, 0xCD, 0xEF, 0x9F, 0xF9, 0x0A}), "AB:CD:EF:9F:F9:0A");
    EXPECT_EQ(address("%.8a", {0x50, 0x06, 0x0E, 0x80, 0x10, 0x2A, 0x3B, 0xFF}),
              "50:06:0E:80:10:2A:3B:FF");
    EXPECT_EQ(address("[%14.4a]", {10, 0, 0, 1}), "[      10.0.0.1]");
    EXPECT_EQ(address("[%-20.6a]", {0, 1, 2, 3, 4, 5}), "[00:01:02:03:04:05   ]");
}

TEST(PrintFAddress, WantsAKnownSize) {
    for (const char* format : {"%a", "%.0a", "%.5a", "%.7a", "%.17a", "%.2147483647a"}) {
        EXPECT_EQ(address(format, {0}), kSizeError) << format;
    }
}

TEST(PrintFAddress, PrintsNull) {
    for (const char* format : {"%a", "%.4a", "%.6a", "%.16a", "%#a", "%##a"}) {
        EXPECT_EQ(printed(format, static_cast<const void*>(nullptr)), "<<NULL>>") << format;
    }
}

// Builds the bytes of eight 16-bit groups.
Bytes ipv6(const std::array<unsigned, 8>& groups) {
    Bytes bytes;
    for (const unsigned group : groups) {
        bytes.push_back(static_cast<std::uint8_t>(group >> 8));
        bytes.push_back(static_cast<std::uint8_t>(group));
    }
    return bytes;
}

struct IPv6Row {
    std::array<unsigned, 8> groups;
    const char* text;
};

constexpr std::array<IPv6Row, 20> kIPv6Rows = {{
    {{0x2001, 0xdb8, 0, 1, 0, 0, 0, 1}, "2001:db8:0:1::1"},
    {{0x2001, 0xdb8, 0, 1, 1, 1, 0, 1}, "2001:db8::1:1:1:0:1"},
    {{0x2001, 0xdb8, 1, 2, 3, 4, 5, 6}, "2001:db8:1:2:3:4:5:6"},
    {{0x2001, 0xdb8, 0, 0, 1, 0, 0, 1}, "2001:db8::1:0:0:1"},  // the first of two equal runs
    {{0, 0, 0, 0, 0, 0, 0, 0}, "::"},
    {{0, 0, 0, 0, 0, 0, 0, 1}, "::1"},
    {{0, 0, 0, 0, 0, 0, 0, 2}, "::0.0.0.2"},
    {{0, 0, 0, 0, 0, 0, 0xC000, 0x0201}, "::192.0.2.1"},
    {{0, 0, 0, 0, 0, 0xFFFF, 0xC000, 0x0201}, "::ffff:192.0.2.1"},
    {{0, 0, 0, 0, 0, 0xFFFF, 0, 0}, "::ffff:0.0.0.0"},
    {{0, 0, 0, 0, 0xFFFF, 0, 0, 0}, "::ffff:0:0:0"},
    {{0, 0, 0, 0, 0, 0xFFFE, 1, 1}, "::fffe:1:1"},
    {{1, 0, 0, 0, 0, 0xFFFF, 1, 1}, "1::ffff:1:1"},
    {{0xfe80, 0, 0, 0, 0x0211, 0x22ff, 0xfe33, 0x4455}, "fe80::211:22ff:fe33:4455"},
    {{0xff02, 0, 0, 0, 0, 0, 0, 0xfb}, "ff02::fb"},
    {{1, 2, 3, 4, 5, 6, 7, 0}, "1:2:3:4:5:6:7::"},
    {{0, 2, 3, 4, 5, 6, 7, 8}, "::2:3:4:5:6:7:8"},
    {{1, 0, 0, 4, 0, 0, 0, 0}, "1:0:0:4::"},
    {{0xABCD, 0xEF, 0, 0, 0, 0, 0, 0}, "abcd:ef::"},
    {{0x1111, 0x2222, 0x3333, 0x4444, 0x5555, 0x6666, 0x7777, 0x8888},
     "1111:2222:3333:4444:5555:6666:7777:8888"},
}};

TEST(PrintFAddress, PrintsIPv6) {
    for (const auto& row : kIPv6Rows) EXPECT_EQ(address("%.16a", ipv6(row.groups)), row.text);
}

TEST(PrintFTaggedAddress, PrintsByType) {
    EXPECT_EQ(address("%#a", joined(hostOrder(4), Bytes{192, 0, 2, 1})), "192.0.2.1");
    for (const auto& row : kIPv6Rows) {
        EXPECT_EQ(address("%#a", joined(hostOrder(6), ipv6(row.groups))), row.text);
    }
}

TEST(PrintFTaggedAddress, ReportsOtherTypes) {
    EXPECT_EQ(address("%#a", hostOrder(9)), "<< ERROR: %#a used with unsupported type: 9 >>");
    EXPECT_EQ(address("%#a", hostOrder(0xFFFFFFFF)),
              "<< ERROR: %#a used with unsupported type: -1 >>");
}

Bytes socketIPv4(unsigned port, const Bytes& octets) {
    return joined(
        Bytes{16, 2, static_cast<std::uint8_t>(port >> 8), static_cast<std::uint8_t>(port)},
        octets);
}

Bytes socketIPv6(unsigned port, const Bytes& octets, std::uint32_t scope) {
    return joined(
        Bytes{28, 30, static_cast<std::uint8_t>(port >> 8), static_cast<std::uint8_t>(port)},
        Bytes{0xDE, 0xAD, 0xBE, 0xEF}, octets, hostOrder(scope));
}

TEST(PrintFSocketAddress, PrintsIPv4WithItsPort) {
    EXPECT_EQ(address("%##a", socketIPv4(0, {192, 0, 2, 1})), "192.0.2.1");
    EXPECT_EQ(address("%##a", socketIPv4(80, {192, 0, 2, 1})), "192.0.2.1:80");
    EXPECT_EQ(address("[%##16a]", socketIPv4(65535, {10, 0, 0, 1})), "[  10.0.0.1:65535]");
}

TEST(PrintFSocketAddress, PrintsIPv6WithScopeAndPort) {
    constexpr std::uint32_t kNoInterface = 0x7FFFFFFE;
    const Bytes host = ipv6({0xfe80, 0, 0, 0, 0, 0, 0, 1});
    EXPECT_EQ(address("%##a", socketIPv6(0, host, 0)), "fe80::1");
    EXPECT_EQ(address("%##a", socketIPv6(443, host, 0)), "[fe80::1]:443");
    EXPECT_EQ(address("%##a", socketIPv6(0, host, kNoInterface)), "fe80::1%2147483646");
    EXPECT_EQ(address("%##a", socketIPv6(443, host, kNoInterface)), "[fe80::1%2147483646]:443");
    const Bytes mapped = ipv6({0, 0, 0, 0, 0, 0xFFFF, 0xC000, 0x0201});
    EXPECT_EQ(address("%##a", socketIPv6(1, mapped, 0)), "[::ffff:192.0.2.1]:1");
}

TEST(PrintFSocketAddress, NamesTheInterfaceOfAScope) {
    std::array<char, IF_NAMESIZE> name = {};
    if (if_indextoname(1, name.data()) == nullptr) GTEST_SKIP() << "no interface of index 1";
    EXPECT_EQ(address("%##a", socketIPv6(0, ipv6({0xfe80, 0, 0, 0, 0, 0, 0, 1}), 1)),
              std::string("fe80::1%") + name.data());
}

Bytes socketLink(const std::string& name, const Bytes& hardware) {
    const Bytes nameBytes(name.begin(), name.end());
    const auto total = static_cast<std::uint8_t>(8 + name.size() + hardware.size());
    return joined(Bytes{total, 18, 2, 0, 6, static_cast<std::uint8_t>(name.size()),
                        static_cast<std::uint8_t>(hardware.size()), 0},
                  nameBytes, hardware);
}

TEST(PrintFSocketAddress, PrintsTheHardwareAddressBehindTheInterfaceName) {
    const Bytes mac = {0xAA, 0x11, 0x22, 0x33, 0x44, 0xBB};
    EXPECT_EQ(address("%##a", socketLink("en0", mac)), "AA:11:22:33:44:BB");
    EXPECT_EQ(address("%##a", socketLink("", mac)), "AA:11:22:33:44:BB");
    EXPECT_EQ(address("%##a", socketLink("en0", {1, 2, 0xFE})), "<< AF_LINK 01 02 fe >>");
    EXPECT_EQ(address("%##a", socketLink("lo0", {})), "<< AF_LINK  >>");
}

TEST(PrintFSocketAddress, ReadsALinkAddressWithinItsLengthByte) {
    const Bytes sample = socketLink("en0", {1, 2, 3, 4, 5, 6});
    for (const std::size_t offset : {std::size_t{5}, std::size_t{6}}) {
        const std::array offsets = {offset};
        halvane::testing::forEachValueAt(sample, offsets, [](const halvane::ByteBuffer& bytes) {
            EXPECT_FALSE(printed("%##a", bytes.bytes().data()).empty());
        });
    }
}

// The address begins after 8 bytes of header and the name. The rest of a cut address is no MAC
// address, even if 6 bytes remain.
TEST(PrintFSocketAddress, PrintsWhatTheLengthByteLeavesOfALinkAddress) {
    struct Row {
        Bytes hardware;
        std::size_t kept;
        const char* text;
    };
    const std::vector<Row> rows = {
        {{1, 2, 3, 4, 5, 0xFE}, 6, "01:02:03:04:05:FE"},
        {{1, 2, 3, 4, 5, 0xFE}, 5, "<< AF_LINK 01 02 03 04 05 >>"},
        {{1, 2, 3, 4, 5, 0xFE}, 1, "<< AF_LINK 01 >>"},
        {{1, 2, 3, 4, 5, 0xFE}, 0, "<< AF_LINK  >>"},
        {{1, 2, 3, 4, 5, 6, 7, 8}, 8, "<< AF_LINK 01 02 03 04 05 06 07 08 >>"},
        {{1, 2, 3, 4, 5, 6, 7, 8}, 6, "<< AF_LINK 01 02 03 04 05 06 >>"},
    };
    for (const auto& row : rows) {
        Bytes cut = socketLink("en0", row.hardware);
        cut.resize(8 + 3 + row.kept);
        cut[0] = static_cast<std::uint8_t>(cut.size());
        EXPECT_EQ(address("%##a", cut), row.text);
    }
    for (std::size_t length = 2; length < 8 + 3; ++length) {
        Bytes cut = socketLink("en0", {1, 2, 3, 4, 5, 6});
        cut.resize(length);
        cut[0] = static_cast<std::uint8_t>(length);
        EXPECT_EQ(address("%##a", cut), "<< AF_LINK  >>") << length;
    }
}

TEST(PrintFSocketAddress, ReportsOtherFamilies) {
    EXPECT_EQ(address("%##a", {16, 0}), "<< AF_UNSPEC >>");
    EXPECT_EQ(address("%##a", {16, 1}), "<< ERROR: %##a used with unknown family: 1 >>");
    EXPECT_EQ(address("%##a", {16, 255}), "<< ERROR: %##a used with unknown family: 255 >>");
}

}  // namespace
