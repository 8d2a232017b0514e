#include "halvane/air/ht_operation.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// 9.4.2.56: secondary channel above, any width, non-HT mixed, OBSS bit, and channel 50 in the
// eight bits from bit 13 on.
constexpr auto kAbove = "24 0553060000 00000000000000000000000000000000";
// Secondary channel below, 20 MHz alone, RIFS, and the other flags but the OBSS bit.
constexpr auto kBelow = "06 0B0700C001 FF000000000000000000000000000000";

TEST(AirHtOperation, DecodesTheChannel) {
    const auto element = HtOperation::decode(bytesOf(kAbove));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->primaryChannel, 36);
    EXPECT_EQ(element->secondaryChannel(), SecondaryChannel::Above);
    EXPECT_TRUE(element->isAnyWidthAllowed());
    EXPECT_FALSE(element->isRifsPermitted());
    EXPECT_EQ(element->protection(), HtOperation::Protection::NonHtMixed);
    EXPECT_FALSE(element->hasNongreenfieldStations());
    EXPECT_TRUE(element->hasObssNonHtStations());
    EXPECT_EQ(element->centerSegment2(), 50);
    EXPECT_FALSE(element->hasDualBeacon());
    EXPECT_EQ(element->basicMcs.streams(), 0);
}

TEST(AirHtOperation, DecodesEveryFlag) {
    const auto element = HtOperation::decode(bytesOf(kBelow));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->primaryChannel, 6);
    EXPECT_EQ(element->secondaryChannel(), SecondaryChannel::Below);
    EXPECT_FALSE(element->isAnyWidthAllowed());
    EXPECT_TRUE(element->isRifsPermitted());
    EXPECT_EQ(element->protection(), HtOperation::Protection::NonHtMixed);
    EXPECT_TRUE(element->hasNongreenfieldStations());
    EXPECT_FALSE(element->hasObssNonHtStations());
    EXPECT_FALSE(element->centerSegment2());
    EXPECT_TRUE(element->hasDualBeacon());
    EXPECT_TRUE(element->isDualCtsProtectionRequired());
    EXPECT_TRUE(element->isStbcBeacon());
    EXPECT_EQ(element->basicMcs.streams(), 1);
}

TEST(AirHtOperation, Has22Octets) {
    auto bytes = bytesOf(kBelow);
    ASSERT_EQ(bytes.size(), 22u);
    EXPECT_EQ(HtOperation::decode(bytes)->encode(), bytes);
    bytes.pop_back();
    EXPECT_FALSE(HtOperation::decode(bytes));
}

TEST(AirHtOperation, IsEncodedFromItsFields) {
    HtOperation element;
    element.primaryChannel = 149;
    element.information.setBits(0, 3, 0b101);
    element.information.setBits(13, 8, 155);
    EXPECT_EQ(element.encode(), bytesOf("95 0560130000 00000000000000000000000000000000"));
}

}  // namespace
