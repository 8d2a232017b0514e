#include "halvane/base/ssid.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <sstream>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "halvane/base/byte_buffer.h"

using halvane::ByteBuffer;
using halvane::Ssid;

namespace {

Ssid ssidOf(std::string_view text) {
    return Ssid::fromText(text).value_or(Ssid());
}

TEST(Ssid, HoldsUpToThirtyTwoOctets) {
    for (std::size_t size = 0; size <= 34; ++size) {
        const std::vector<std::uint8_t> bytes(size, 0xC3);
        const auto ssid = Ssid::fromBytes(bytes);
        ASSERT_EQ(ssid.has_value(), size <= Ssid::kMaxSize) << size;
        if (!ssid) continue;
        EXPECT_EQ(ssid->size(), size);
        EXPECT_EQ(ssid->empty(), size == 0);
        EXPECT_EQ(ssid->buffer(), ByteBuffer(bytes));
    }
}

TEST(Ssid, KeepsWhatIsNoText) {
    const ByteBuffer octets{0x00, 0xFF, 0x41, 0x00};
    const auto ssid = Ssid::fromBytes(octets.bytes());
    ASSERT_TRUE(ssid);
    EXPECT_EQ(ssid->buffer(), octets);
    EXPECT_EQ(ssid->text(), "\\x00\\xFFA\\x00");
}

TEST(Ssid, PrintsSafely) {
    EXPECT_EQ(ssidOf("Caf\xC3\xA9").text(), "Caf\xC3\xA9");
    EXPECT_EQ(ssidOf("a\x1B[2Jb").text(), "a\\x1B[2Jb");
    EXPECT_EQ(ssidOf("back\\slash").text(), "back\\\\slash");
    std::ostringstream stream;
    stream << ssidOf("net\n");
    EXPECT_EQ(stream.str(), "net\\x0A");
}

TEST(Ssid, IsHiddenWithoutOctetsOrWithZerosAlone) {
    EXPECT_TRUE(Ssid().isHidden());
    EXPECT_TRUE(ssidOf(std::string_view("\0\0\0", 3)).isHidden());
    EXPECT_FALSE(ssidOf(std::string_view("\0a", 2)).isHidden());
    EXPECT_FALSE(ssidOf("0").isHidden());
}

TEST(Ssid, ComparesOctetsThenLength) {
    EXPECT_LT(Ssid(), ssidOf("a"));
    EXPECT_LT(ssidOf("a"), ssidOf("aa"));
    EXPECT_LT(ssidOf("aa"), ssidOf("b"));
    EXPECT_LT(ssidOf("z"), ssidOf("\xC3"));
    EXPECT_NE(ssidOf("a"), ssidOf(std::string_view("a\0", 2)));
    EXPECT_EQ(ssidOf("net"), ssidOf("net"));
}

TEST(Ssid, ForgetsALongerNameWhole) {
    Ssid ssid = ssidOf("a long name");
    ssid = ssidOf("a");
    EXPECT_EQ(ssid, ssidOf("a"));
    EXPECT_EQ(std::hash<Ssid>()(ssid), std::hash<Ssid>()(ssidOf("a")));
}

TEST(Ssid, KeysAHashedSet) {
    const std::unordered_set<Ssid> names = {ssidOf("a"), ssidOf("b"), ssidOf("a"), Ssid()};
    EXPECT_EQ(names.size(), 3u);
    EXPECT_TRUE(names.contains(Ssid()));
}

}  // namespace
