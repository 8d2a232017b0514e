#include <cstdint>
#include <gtest/gtest.h>
#include <vector>

#include "halvane/air/element_codec_internal.h"
#include "halvane/base/byte_buffer.h"
#include "halvane/base/ssid.h"

#include "tests/support/hostile_bytes.h"

using halvane::ByteBuffer;
using halvane::Ssid;
using halvane::testing::Bytes;
using namespace halvane::air;

namespace {

TEST(ElementCodec, ReadsWholeItemsAndLeavesTheRest) {
    const auto layout = [](auto& codec, auto& element) {
        codec.wholeItems(2, element.items, [&](auto& item) { codec.number("Item", item); });
        codec.rest(element.rest);
    };
    struct Pairs {
        std::vector<std::uint16_t> items{};
        ByteBuffer rest{};
    };
    const Bytes body = {1, 2, 3, 4, 5};
    const auto pairs = decodeBy<Pairs>(layout, body);
    ASSERT_TRUE(pairs);
    EXPECT_EQ(pairs->items, (std::vector<std::uint16_t>{0x0201, 0x0403}));
    EXPECT_EQ(pairs->rest, ByteBuffer({5}));
    EXPECT_EQ(encodeBy(layout, *pairs), body);
    EXPECT_TRUE(decodeBy<Pairs>(layout, Octets())->items.empty());
}

TEST(ElementCodec, ReadsANameOfAtMost32Octets) {
    const auto layout = [](auto& codec, auto& name) { codec.ssid("SSID", name); };
    const Bytes longest(32, 'x');
    EXPECT_EQ(decodeBy<Ssid>(layout, longest), Ssid::fromBytes(longest));
    EXPECT_EQ(decodeBy<Ssid>(layout, Octets()), Ssid());
    EXPECT_FALSE(decodeBy<Ssid>(layout, Bytes(33, 'x')));
    EXPECT_EQ(encodeBy(layout, *Ssid::fromBytes(longest)), longest);
}

}  // namespace
