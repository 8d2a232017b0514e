#include "halvane/air/bandwidth_indication.h"

#include <gtest/gtest.h>

#include "halvane/air/eht_operation.h"

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// 160 MHz on 15 after the switch, and without the highest 20 MHz.
TEST(AirBandwidthIndication, DecodesTheChannel) {
    const auto element = BandwidthIndication::decode(bytesOf("02 03 07 0F 8000"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->channel.channelWidth(), EhtOperationInformation::ChannelWidth::Mhz160);
    EXPECT_EQ(element->channel.centerSegment0, 7);
    EXPECT_EQ(element->channel.centerSegment1, 15);
    EXPECT_TRUE(element->channel.isDisabled(7));
    EXPECT_FALSE(element->channel.isDisabled(6));
}

TEST(AirBandwidthIndication, NeedsTheBitmapOnlyIfTold) {
    EXPECT_FALSE(BandwidthIndication::decode(bytesOf("02 03 07 0F 80")));
    const auto element = BandwidthIndication::decode(bytesOf("00 03 07 0F 80"));
    ASSERT_TRUE(element);
    EXPECT_FALSE(element->channel.disabledSubchannels);
    EXPECT_EQ(element->rest.size(), 1u);
    EXPECT_FALSE(BandwidthIndication::decode(bytesOf("00 03 07")));
}

TEST(AirBandwidthIndication, IsEncodedFromItsFields) {
    BandwidthIndication element;
    element.setChannel(
        {.control = {{0x02}}, .centerSegment0 = 42, .disabledSubchannels = {{{8, 0}}}});
    EXPECT_EQ(element.encode(), bytesOf("02 02 2A 00 0800"));
    element.setChannel({});
    EXPECT_EQ(element.encode(), bytesOf("00 00 00 00"));
}

}  // namespace
