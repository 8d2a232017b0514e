#include "halvane/air/multi_link_traffic.h"

#include <cstdint>
#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// 9.4.2.315: bitmaps of 3 bits for the stations from AID 33 on: links 0 and 2, link 1.
TEST(AirMultiLinkTraffic, DecodesTheBitmaps) {
    const auto element = MultiLinkTraffic::decode(bytesOf("1202 15"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->bitmapSize(), 3u);
    EXPECT_EQ(element->aidOffset(), 33);
    EXPECT_EQ(element->links(0), 0b101);
    EXPECT_EQ(element->links(1), 0b010);
    EXPECT_FALSE(element->links(2));
    EXPECT_FALSE(MultiLinkTraffic::decode(bytesOf("12")));
}

TEST(AirMultiLinkTraffic, ReadsBitmapsAcrossOctets) {
    const auto element = MultiLinkTraffic::decode(bytesOf("0F00 3412 7856"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->bitmapSize(), 16u);
    EXPECT_EQ(element->links(0), 0x1234);
    EXPECT_EQ(element->links(1), 0x5678);
    EXPECT_FALSE(element->links(2));
    const auto none = MultiLinkTraffic::decode(bytesOf("0200"));
    ASSERT_TRUE(none);
    EXPECT_FALSE(none->links(0));
    EXPECT_FALSE(MultiLinkTraffic::decode(bytesOf("0000 FF"))->links(SIZE_MAX));
}

}  // namespace
