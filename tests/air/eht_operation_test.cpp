#include "halvane/air/eht_operation.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>

#include "halvane/air/eht_mcs_sets.h"

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// 320 MHz on 63, of which the primary half is on 47. The reserved bits of the control octet are
// set. The subchannels 2 and 3 are punctured.
TEST(AirEhtOperation, DecodesEveryField) {
    const auto element = EhtOperation::decode(bytesOf("7F 21436587 FC 2F 3F 0C00"));
    ASSERT_TRUE(element);
    EXPECT_TRUE(element->isDefaultPeDuration20());
    EXPECT_TRUE(element->isGroupAddressedBuIndicationLimited());
    EXPECT_EQ(element->groupAddressedBuIndicationExponent(), 3);
    EXPECT_TRUE(element->isMcs15Disabled());
    EXPECT_EQ(element->basicMcs.rxStreams(7), 1);
    EXPECT_EQ(element->basicMcs.txStreams(7), 2);
    EXPECT_EQ(element->basicMcs.rxStreams(10), 5);
    EXPECT_EQ(element->basicMcs.txStreams(13), 8);
    ASSERT_TRUE(element->information);
    EXPECT_EQ(element->information->channelWidth(), EhtOperationInformation::ChannelWidth::Mhz320);
    EXPECT_EQ(element->information->centerSegment0, 47);
    EXPECT_EQ(element->information->centerSegment1, 63);
    for (std::size_t i = 0; i < 20; ++i) {
        EXPECT_EQ(element->information->isDisabled(i), i == 2 || i == 3) << i;
    }
}

TEST(AirEhtOperation, LeavesTheChannelToOthers) {
    const auto element = EhtOperation::decode(bytesOf("00 11111111"));
    ASSERT_TRUE(element);
    EXPECT_FALSE(element->information);
    EXPECT_FALSE(EhtOperation::decode(bytesOf("00 111111")));
}

// Without information there is no bitmap either.
TEST(AirEhtOperation, ReadsNoBitmapWithoutInformation) {
    const auto element = EhtOperation::decode(bytesOf("02 11111111 0C00"));
    ASSERT_TRUE(element);
    EXPECT_FALSE(element->information);
    EXPECT_EQ(element->rest.size(), 2u);
}

TEST(AirEhtOperation, NeedsWhatTheParametersTell) {
    EXPECT_FALSE(EhtOperation::decode(bytesOf("01 11111111 022F")));
    EXPECT_TRUE(EhtOperation::decode(bytesOf("01 11111111 022F00")));
    EXPECT_FALSE(EhtOperation::decode(bytesOf("03 11111111 022F00 00")));
}

TEST(AirEhtOperation, TellsAReservedWidth) {
    for (std::uint8_t width = 5; width < 8; ++width) {
        EXPECT_EQ(EhtOperationInformation{.control = {{width}}}.channelWidth(),
                  EhtOperationInformation::ChannelWidth::Reserved);
    }
}

TEST(AirEhtOperation, IsEncodedFromItsFields) {
    EhtOperation element;
    element.setInformation(EhtOperationInformation{.control = {{0x02}}, .centerSegment0 = 106});
    EXPECT_EQ(element.encode(), bytesOf("01 00000000 02 6A 00"));
    element.information->disabledSubchannels.emplace().setBit(9, true);
    element.setInformation(element.information);
    EXPECT_EQ(element.encode(), bytesOf("03 00000000 02 6A 00 0002"));
    element.setInformation({});
    EXPECT_EQ(element.encode(), bytesOf("00 00000000"));
}

}  // namespace
