#include "halvane/base/mac_address.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <set>
#include <sstream>
#include <unordered_set>
#include <vector>

#include "halvane/base/byte_buffer.h"

using halvane::MacAddress;

namespace {

constexpr MacAddress kAddress({0x00, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E});

TEST(MacAddress, IsZeroAtFirst) {
    EXPECT_EQ(MacAddress().text(), "00:00:00:00:00:00");
}

TEST(MacAddress, ComesOfSixOctetsAlone) {
    for (std::size_t size = 0; size <= 8; ++size) {
        const std::vector<std::uint8_t> bytes(size, 7);
        EXPECT_EQ(MacAddress::fromBytes(bytes).has_value(), size == MacAddress::kSize) << size;
    }
    const halvane::ByteBuffer buffer = kAddress.buffer();
    EXPECT_EQ(MacAddress::fromBytes(buffer.bytes()), kAddress);
}

TEST(MacAddress, ReadsItsUsualForms) {
    for (const char* text : {"00:1a:2b:3c:4d:5e", "00:1A:2B:3C:4D:5E", "00-1a-2b-3C-4d-5e",
                             "001a2b3c4d5e", "001A2B3C4D5E"}) {
        EXPECT_EQ(MacAddress::fromText(text), kAddress) << text;
    }
}

TEST(MacAddress, RefusesEveryOtherText) {
    for (const char* text :
         {"", "0", "00:1a:2b:3c:4d", "00:1a:2b:3c:4d:5e:", "00:1a:2b:3c:4d:5e:6f",
          "0:1a:2b:3c:4d:5e", "00:1a-2b:3c-4d:5e", "00.1a.2b.3c.4d.5e", "00:1a:2b:3c:4d:5g",
          "g01a2b3c4d5e", " 00:1a:2b:3c:4d:5", "00 1a 2b 3c 4d 5e", "+0:1a:2b:3c:4d:5e",
          "001a2b3c4d5", "001a2b3c4d5e6"}) {
        EXPECT_EQ(MacAddress::fromText(text), std::nullopt) << text;
    }
}

TEST(MacAddress, IsReadBackFromItsText) {
    for (unsigned octet = 0; octet < 256; ++octet) {
        const auto low = static_cast<std::uint8_t>(octet);
        const MacAddress address({low, 0, low, 1, 0xFF, low});
        EXPECT_EQ(MacAddress::fromText(address.text()), address);
    }
}

TEST(MacAddress, TellsItsKind) {
    EXPECT_FALSE(kAddress.isGroup());
    EXPECT_FALSE(kAddress.isLocal());
    EXPECT_EQ(kAddress.oui(), (std::array<std::uint8_t, 3>{0x00, 0x1A, 0x2B}));
    constexpr MacAddress kAll({0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF});
    EXPECT_TRUE(kAll.isGroup());
    EXPECT_TRUE(kAll.isBroadcast());
    constexpr MacAddress kGroup({0x01, 0x00, 0x5E, 0, 0, 1});
    EXPECT_TRUE(kGroup.isGroup());
    EXPECT_FALSE(kGroup.isBroadcast());
    EXPECT_FALSE(kGroup.isLocal());
    EXPECT_TRUE(MacAddress({0x02, 0, 0, 0, 0, 0}).isLocal());
}

TEST(MacAddress, HasTheOrderOfItsNumber) {
    constexpr MacAddress kNext({0x00, 0x1A, 0x2B, 0x3C, 0x4D, 0x5F});
    constexpr MacAddress kHigh({0x80, 0, 0, 0, 0, 0});
    EXPECT_LT(kAddress, kNext);
    EXPECT_LT(kNext, kHigh);
    EXPECT_EQ((std::set<MacAddress>{kHigh, kNext, kAddress, kNext}.size()), 3u);
}

TEST(MacAddress, KeysAHashedSet) {
    std::unordered_set<MacAddress> addresses;
    for (std::uint8_t last = 0; last < 100; ++last) {
        addresses.insert(MacAddress({2, 0, 0, 0, 0, last}));
    }
    EXPECT_EQ(addresses.size(), 100u);
    EXPECT_TRUE(addresses.contains(MacAddress({2, 0, 0, 0, 0, 99})));
    EXPECT_FALSE(addresses.contains(kAddress));
}

TEST(MacAddress, GoesToAStreamAsText) {
    std::ostringstream stream;
    stream << kAddress;
    EXPECT_EQ(stream.str(), "00:1a:2b:3c:4d:5e");
}

}  // namespace
