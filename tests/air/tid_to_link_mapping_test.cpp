#include "halvane/air/tid_to_link_mapping.h"

#include <cstddef>
#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// 9.4.2.314: TIDs 0 and 7, for both directions, from a time on and for a time.
TEST(AirTidToLinkMapping, DecodesEveryField) {
    const auto element = TidToLinkMapping::decode(bytesOf("1A 81 3412 563412 0300 0480 EE"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->direction(), TidToLinkDirection::Both);
    EXPECT_FALSE(element->isDefault());
    EXPECT_EQ(element->switchTime, 0x1234);
    EXPECT_EQ(element->expectedDuration, 0x123456u);
    EXPECT_EQ(element->links[0], 0x0003);
    EXPECT_EQ(element->links[7], 0x8004);
    for (std::size_t tid = 1; tid < 7; ++tid) EXPECT_FALSE(element->links[tid]) << tid;
    EXPECT_EQ(element->rest.size(), 1u);
}

TEST(AirTidToLinkMapping, HasNoMappingIfItIsTheDefault) {
    const auto element = TidToLinkMapping::decode(bytesOf("04"));
    ASSERT_TRUE(element);
    EXPECT_TRUE(element->isDefault());
    EXPECT_EQ(element->direction(), TidToLinkDirection::Downlink);
    EXPECT_FALSE(element->presence || element->switchTime || element->expectedDuration);
    EXPECT_FALSE(TidToLinkMapping::decode(bytesOf("00")));
    EXPECT_FALSE(TidToLinkMapping::decode({}));
}

TEST(AirTidToLinkMapping, MayHaveMappingsOfOneOctet) {
    const auto element = TidToLinkMapping::decode(bytesOf("21 06 05 0A"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->direction(), TidToLinkDirection::Uplink);
    EXPECT_EQ(element->links[1], 5);
    EXPECT_EQ(element->links[2], 10);
    EXPECT_TRUE(element->rest.empty());
    EXPECT_FALSE(TidToLinkMapping::decode(bytesOf("01 06 05 0A")));
}

TEST(AirTidToLinkMapping, IsEncodedFromItsFields) {
    TidToLinkMapping element;
    EXPECT_EQ(element.encode(), bytesOf("04"));
    element.links[2] = 0x0101;
    element.switchTime = 5;
    EXPECT_EQ(element.encode(), bytesOf("08 04 0500 0101"));
}

}  // namespace
